#include "platform/photos/PictureSize.h"

#include "platform/uivalues/ShrunkSize.h"

#include <algorithm>

namespace exifcard {
namespace {

/// How much a part of a picture shrinks for a target: at most to 1, never to nothing.
double scaleFor(CGSize part, const WantedPicture& wanted) {
    const CGSize target = wanted.targetSize;
    const bool isBounded = target.width > 0 && target.height > 0;
    if (!isBounded || wanted.resizeMode == PHImageRequestOptionsResizeMode::None) {
        return 1;
    }
    const double horizontal = target.width / part.width;
    const double vertical = target.height / part.height;
    const bool isFill = wanted.contentMode == PHImageContentMode::AspectFill;
    return std::min(1.0, isFill ? std::max(horizontal, vertical) : std::min(horizontal, vertical));
}

/// The part of the picture that is wanted, in its pixels.
CGRect partOf(CGSize natural, const WantedPicture& wanted) {
    const CGRect crop = wanted.crop;
    const bool isCropped = wanted.resizeMode == PHImageRequestOptionsResizeMode::Exact &&
                           crop.size.width > 0 && crop.size.height > 0;
    if (!isCropped) {
        return {{0, 0}, natural};
    }
    const double left = std::clamp(crop.origin.x, 0.0, 1.0);
    const double top = std::clamp(crop.origin.y, 0.0, 1.0);
    const double width = std::min(crop.size.width, 1 - left);
    const double height = std::min(crop.size.height, 1 - top);
    return {{left * natural.width, top * natural.height},
        {std::max(1.0, width * natural.width), std::max(1.0, height * natural.height)}};
}

} // namespace

PicturePlacement placementOf(CGSize natural, const WantedPicture& wanted) {
    const CGRect part = partOf(natural, wanted);
    const double scale = scaleFor(part.size, wanted);
    PicturePlacement placement;
    placement.canvas = {wholeLength(part.size.width * scale), wholeLength(part.size.height * scale)};
    // Stretched by less than a pixel, so that no edge is half covered.
    const double horizontal = placement.canvas.width / part.size.width;
    const double vertical = placement.canvas.height / part.size.height;
    placement.picture = {{-part.origin.x * horizontal, -part.origin.y * vertical},
        {natural.width * horizontal, natural.height * vertical}};
    return placement;
}

} // namespace exifcard
