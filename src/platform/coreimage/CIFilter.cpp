#include "platform/coreimage/CIFilter.h"

#include "platform/imageio/RawPixels.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/BitmapGeometry.h"
#include "platform/uivalues/UIImage.h"

#include <utility>

namespace exifcard {
namespace {

CGSize exchanged(CGSize size) {
    return {size.height, size.width};
}

/// Stored pixels, turned upright.
class UprightPixels : public PixelSource {
public:
    UprightPixels(std::shared_ptr<const PixelSource> stored, int exifOrientation)
        : _stored(std::move(stored))
        , _exifOrientation(exifOrientation) {}

    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> smallest) const override {
        const bool exchanges = smallest && isQuarterTurn(_exifOrientation);
        auto stored = _stored->decode(exchanges ? exchanged(*smallest) : smallest);
        if (!stored || _exifOrientation == 1) {
            return stored;
        }
        return std::make_shared<const Bitmap>(turnedBitmap(*stored, _exifOrientation));
    }

private:
    std::shared_ptr<const PixelSource> _stored;
    int _exifOrientation;
};

} // namespace

std::shared_ptr<const CIFilter> CIFilter::filterWithImageData(Data imageData, std::string_view typeHint) {
    return isRawType(typeHint) ? std::shared_ptr<const CIFilter>(new CIFilter(std::move(imageData)))
                               : nullptr;
}

std::shared_ptr<UIImage> CIFilter::outputImage() const {
    const auto facts = rawFacts(_imageData);
    if (!facts) {
        return nullptr;
    }
    PixelSize upright = facts->size;
    if (isQuarterTurn(facts->exifOrientation)) {
        std::swap(upright.width, upright.height);
    }
    return std::make_shared<UIImage>(
        std::make_shared<UprightPixels>(rawPixels(_imageData, facts->size), facts->exifOrientation),
        upright.width, upright.height);
}

} // namespace exifcard
