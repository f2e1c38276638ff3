#include "categories/UIImage+Resize.h"
#include "platform/imageio/CGImageThumbnail.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/uivalues/UIScreen.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace exifcard {
namespace {

constexpr CGImageThumbnailOptions kThumbnailOptions = {
    .maximumPixelSize = 512, .createFromImageAlways = true, .createWithTransform = true};

struct OrientationAngle {
    UIImageOrientation orientation;
    float degrees;
};

constexpr OrientationAngle kAngles[] = {
    {UIImageOrientation::Up, 0},
    {UIImageOrientation::Down, 180},
    {UIImageOrientation::Left, 90},
    {UIImageOrientation::Right, -90},
};

CGSize scaled(CGSize size, double factor) {
    return {size.width * factor, size.height * factor};
}

bool isSmallerBothWays(CGSize image, CGSize limits) {
    return image.width < limits.width && image.height < limits.height;
}

} // namespace

float degreeOfOrientation(UIImageOrientation orientation) {
    const auto* const angle = std::ranges::find(kAngles, orientation, &OrientationAngle::orientation);
    return angle != std::end(kAngles) ? angle->degrees : 0;
}

std::shared_ptr<UIImage> imageWithImageScaledToSizeInRect(
    const std::shared_ptr<UIImage>& image, CGSize size, const CGRect& rect) {
    return image ? drawnImage(*image, size, rect, 1) : nullptr;
}

std::shared_ptr<UIImage> imageWithImageScaledToFitToSize(const std::shared_ptr<UIImage>& image, CGSize size) {
    if (!image) {
        return nullptr;
    }
    const CGSize target = scaled(size, UIScreen::mainScreen().scale);
    const CGSize own = image->size();
    if (isSmallerBothWays(own, target)) {
        return image;
    }
    const double factor = std::min(target.width / own.width, target.height / own.height);
    const CGSize fitted = scaled(own, factor);
    return imageWithImageScaledToSizeInRect(image, fitted, {{}, fitted});
}

std::shared_ptr<UIImage> imageWithImageScaledToFillToSize(
    const std::shared_ptr<UIImage>& image, CGSize size) {
    if (!image) {
        return nullptr;
    }
    const CGSize own = image->size();
    if (isSmallerBothWays(own, size)) {
        return image;
    }
    const double horizontal = size.width / own.width;
    const double vertical = size.height / own.height;
    const CGSize filling = scaled(own, std::max(horizontal, vertical));
    const CGPoint origin = horizontal > vertical ? CGPoint{0, (size.height - filling.height) / 2}
                                                 : CGPoint{(size.width - filling.width) / 2, 0};
    return imageWithImageScaledToSizeInRect(image, size, {origin, filling});
}

std::shared_ptr<UIImage> thumbNailImageFromImageSource(const CGImageSourcePtr& source) {
    return source ? thumbNailImageFromImageSource(source, CGImageSourceCopyPropertiesAtIndex(*source, 0))
                  : nullptr;
}

std::shared_ptr<UIImage> thumbNailImageFromImageSource(
    const CGImageSourcePtr& source, const DictionaryPtr& properties) {
    return source ? CGImageSourceCreateThumbnail(*source, properties, kThumbnailOptions) : nullptr;
}

} // namespace exifcard
