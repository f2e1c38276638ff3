#include "platform/imageio/EncodedPixels.h"

#include "platform/imageio/EmbeddedPreviews.h"
#include "platform/imageio/HeifBoxes.h"
#include "platform/imageio/PixelModules.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/BitmapGeometry.h"

#include <optional>
#include <utility>

namespace exifcard {
namespace {

class EncodedPixels : public PixelSource {
public:
    /// @param decoderTurn  The EXIF code by which the decoder turns by itself; 1 or 0 for none.
    EncodedPixels(Data bytes, std::string type, int decoderTurn)
        : _bytes(std::move(bytes))
        , _type(std::move(type))
        , _decoderTurn(decoderTurn) {}

    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> smallest) const override {
        auto wanted = smallest ? wholePixels(*smallest) : std::nullopt;
        if (wanted && isQuarterTurn(_decoderTurn)) {
            std::swap(wanted->width, wanted->height);
        }
        auto bitmap = decodedBitmap(_bytes.bytes(), _type, wanted);
        if (!bitmap || _bytes.wasCutShort()) {
            return nullptr;
        }
        if (_decoderTurn > 1) {
            *bitmap = turnedBitmap(*bitmap, inverseOrientation(_decoderTurn));
        }
        return std::make_shared<const Bitmap>(std::move(*bitmap));
    }

private:
    Data _bytes;
    std::string _type;
    int _decoderTurn;
};

} // namespace

std::shared_ptr<const PixelSource> encodedPixels(const Data& file, std::string type) {
    // The decoder turns a HEIF or AVIF picture as its boxes ask.
    const auto boxes = readHeifBoxes(file);
    return std::make_shared<EncodedPixels>(file, std::move(type), boxes ? boxes->exifOrientation : 1);
}

} // namespace exifcard
