#include "categories/UIImage+Resize.h"
#include "platform/foundation/Log.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/imageio/PixelModules.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/RoundedCorners.h"
#include "platform/uivalues/UIScreen.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace exifcard {
namespace {

/// Turns clockwise round the canvas' middle what begins half the image's width and height before it.
CGAffineTransform turnRoundMiddle(CGSize image, double side, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const double left = -image.width / 2;
    const double top = -image.height / 2;
    return {cosine, sine, -sine, cosine, side / 2 + cosine * left - sine * top,
        side / 2 + sine * left + cosine * top};
}

} // namespace

std::shared_ptr<UIImage> rotateUIImage(
    const std::shared_ptr<UIImage>& image, UIImageOrientation orientation) {
    if (!image) {
        return nullptr;
    }
    debugLog("Degree Of rotation %f",
        {degreeOfOrientation(image->orientation()) - degreeOfOrientation(orientation)});
    // Intended: the pixels are only taken for upright.
    return std::make_shared<UIImage>(image->pixelSource(), image->storedWidth(), image->storedHeight());
}

std::shared_ptr<UIImage> rotateImage(const std::shared_ptr<UIImage>& image, float degrees) {
    if (!image) {
        return nullptr;
    }
    const CGSize own = image->size();
    const double side = std::max(own.width, own.height);
    // Intended: the shorter side is stretched to the square, and what lies beyond the canvas is lost.
    const auto stretched = drawnImage(*image, {side, side}, {{}, {side, side}}, 1);
    const auto square = stretched ? stretched->bitmap() : nullptr;
    auto turned = square ? transformedBitmap(
                               *square, turnRoundMiddle(own, side, degrees), {square->width, square->height})
                         : std::nullopt;
    return turned ? UIImage::imageWithBitmap(std::make_shared<const Bitmap>(std::move(*turned))) : nullptr;
}

std::shared_ptr<UIImage> imageWithRoundedCornersRadius(const std::shared_ptr<UIImage>& image, float radius) {
    if (!image) {
        return nullptr;
    }
    const double scale = UIScreen::mainScreen().scale;
    const auto drawn = drawnImage(*image, image->size(), {{}, image->size()}, scale);
    const auto bitmap = drawn ? drawn->bitmap() : nullptr;
    return bitmap ? UIImage::imageWithBitmap(
                        std::make_shared<const Bitmap>(withRoundedCorners(*bitmap, radius * scale)), scale)
                  : nullptr;
}

} // namespace exifcard
