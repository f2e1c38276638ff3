#include "platform/uivalues/UIImage.h"

#include "platform/uivalues/Bitmap.h"

#include <array>

namespace exifcard {
namespace {

// Indexed by UIImageOrientation.
constexpr std::array<int, 8> kExifCodes = {1, 3, 8, 6, 2, 4, 5, 7};

bool isQuarterTurn(UIImageOrientation orientation) {
    return exifFromImageOrientation(orientation) >= 5;
}

class DecodedPixels : public PixelSource {
public:
    explicit DecodedPixels(std::shared_ptr<const Bitmap> bitmap) : _bitmap(std::move(bitmap)) {}
    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> /*smallest*/) const override {
        return _bitmap;
    }
    bool isDecoded() const override { return true; }

private:
    std::shared_ptr<const Bitmap> _bitmap;
};

} // namespace

UIImageOrientation imageOrientationFromExif(std::int64_t exifOrientation) {
    for (std::size_t index = 0; index < kExifCodes.size(); ++index) {
        if (kExifCodes[index] == exifOrientation) {
            return static_cast<UIImageOrientation>(index);
        }
    }
    return UIImageOrientation::Up;
}

int exifFromImageOrientation(UIImageOrientation orientation) {
    return kExifCodes[static_cast<std::size_t>(orientation)];
}

UIImage::UIImage(std::shared_ptr<const PixelSource> source,
    int storedWidth,
    int storedHeight,
    UIImageOrientation orientation,
    double scale)
    : _source(std::move(source))
    , _storedWidth(storedWidth)
    , _storedHeight(storedHeight)
    , _orientation(orientation)
    , _scale(scale) {
}

std::shared_ptr<UIImage> UIImage::imageWithBitmap(std::shared_ptr<const Bitmap> bitmap, double scale) {
    if (!bitmap || bitmap->isEmpty()) {
        return nullptr;
    }
    const int width = bitmap->width;
    const int height = bitmap->height;
    return std::make_shared<UIImage>(
        std::make_shared<DecodedPixels>(std::move(bitmap)), width, height, UIImageOrientation::Up, scale);
}

CGSize UIImage::size() const {
    const CGSize stored = {_storedWidth / _scale, _storedHeight / _scale};
    return isQuarterTurn(_orientation) ? CGSize{stored.height, stored.width} : stored;
}

std::shared_ptr<const Bitmap> UIImage::bitmap(std::optional<CGSize> smallest) const {
    return _source->decode(smallest);
}

} // namespace exifcard
