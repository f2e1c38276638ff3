#include "platform/imageio/ImageDrawing.h"

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/BitmapGeometry.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/imageio/HeifBoxes.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/PixelModules.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace exifcard {
namespace {

/// The smallest whole pixels that hold a size; nothing for one that no picture has.
std::optional<PixelSize> wholePixels(CGSize size) {
    constexpr double kMost = std::numeric_limits<int>::max();
    if (!(size.width < kMost && size.height < kMost)) {
        return std::nullopt;
    }
    return PixelSize{static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height))};
}

/// The bytes of a picture file, decoded anew each time they are drawn: a decoded picture takes some ten times
/// their memory.
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

std::shared_ptr<UIImage> imageWithData(const Data& data) {
    const auto source = CGImageSourceCreateWithData(data);
    return canDecode(CGImageSourceGetType(*source))
               ? imageWithSource(*source, CGImageSourceCopyPropertiesAtIndex(*source, 0))
               : nullptr;
}

std::shared_ptr<UIImage> imageWithSource(const CGImageSource& source, const DictionaryPtr& properties) {
    const std::string& type = CGImageSourceGetType(source);
    if (!properties || !canDecode(type)) {
        return nullptr;
    }
    const auto width = properties->objectForKey(kCGImagePropertyPixelWidth).integerValue();
    const auto height = properties->objectForKey(kCGImagePropertyPixelHeight).integerValue();
    constexpr auto kMost = std::numeric_limits<int>::max();
    if (width <= 0 || height <= 0 || width > kMost || height > kMost) {
        return nullptr;
    }
    const auto orientation = properties->objectForKey(kCGImagePropertyOrientation).integerValue();
    const Data& data = CGImageSourceGetData(source);
    const auto boxes = readHeifBoxes(data);
    auto pixels = std::make_shared<EncodedPixels>(data, type, boxes ? boxes->exifOrientation : 1);
    return std::make_shared<UIImage>(std::move(pixels), static_cast<int>(width), static_cast<int>(height),
        imageOrientationFromExif(orientation));
}

} // namespace exifcard
