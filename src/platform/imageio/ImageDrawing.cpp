#include "platform/imageio/ImageDrawing.h"

#include "platform/imageio/PixelModules.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/BitmapGeometry.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace exifcard {
namespace {

using BitmapPtr = std::shared_ptr<const Bitmap>;

// A product such as 4032 · (2700 / 4032) may miss its whole number by the last bit.
constexpr double kRoundingError = 1e-3;

double roundedDown(double pixels) {
    return std::floor(pixels + kRoundingError);
}

double roundedUp(double pixels) {
    return std::ceil(pixels - kRoundingError);
}

/// Whole pixels; as doubles, since an image may be drawn far beyond its canvas.
struct PixelBox {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool isEmpty() const { return !(width() > 0 && height() > 0); }
    bool operator==(const PixelBox&) const = default;
};

PixelBox intersection(const PixelBox& a, const PixelBox& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
        std::min(a.bottom, b.bottom)};
}

/// What has an extent takes at least a pixel.
double endOf(double start, double end, double extent) {
    return extent > 0 ? std::max(roundedUp(end), start + 1) : start;
}

PixelBox pixelsOf(const CGRect& rect, double scale) {
    const double left = roundedDown(rect.origin.x * scale);
    const double top = roundedDown(rect.origin.y * scale);
    return {left, top, endOf(left, (rect.origin.x + rect.size.width) * scale, rect.size.width),
        endOf(top, (rect.origin.y + rect.size.height) * scale, rect.size.height)};
}

/// Nothing for a canvas without area or of more pixels than a picture can have.
std::optional<PixelSize> canvasSize(CGSize canvas, double scale) {
    const double width = endOf(0, canvas.width * scale, canvas.width * scale);
    const double height = endOf(0, canvas.height * scale, canvas.height * scale);
    const bool isInReason =
        width >= 1 && height >= 1 && width * height <= static_cast<double>(kMaximumDecodedPixels);
    return isInReason ? std::optional(PixelSize{static_cast<int>(width), static_cast<int>(height)})
                      : std::nullopt;
}

/// Which part of `box` another box within it is, in fractions.
CGRect partOf(const PixelBox& box, const PixelBox& inner) {
    return {{(inner.left - box.left) / box.width(), (inner.top - box.top) / box.height()},
        {inner.width() / box.width(), inner.height() / box.height()}};
}

CGSize storedSize(double width, double height, int orientation) {
    return isQuarterTurn(orientation) ? CGSize{height, width} : CGSize{width, height};
}

/// A part of the stored pixels at that size.
BitmapPtr pieceOf(const BitmapPtr& bitmap, const CGRect& part, CGSize size) {
    const CGRect region = {{part.origin.x * bitmap->width, part.origin.y * bitmap->height},
        {part.size.width * bitmap->width, part.size.height * bitmap->height}};
    const PixelSize wanted = {static_cast<int>(size.width), static_cast<int>(size.height)};
    const double left = std::round(region.origin.x);
    const double top = std::round(region.origin.y);
    const bool isWhole = std::abs(region.size.width - size.width) < kRoundingError &&
                         std::abs(region.size.height - size.height) < kRoundingError &&
                         std::abs(region.origin.x - left) < kRoundingError &&
                         std::abs(region.origin.y - top) < kRoundingError;
    if (isWhole && wanted == PixelSize{bitmap->width, bitmap->height}) {
        return bitmap;
    }
    if (isWhole) {
        return std::make_shared<const Bitmap>(croppedBitmap(
            *bitmap, static_cast<int>(left), static_cast<int>(top), wanted.width, wanted.height));
    }
    auto scaled = scaledBitmap(*bitmap, region, wanted);
    return scaled ? std::make_shared<const Bitmap>(std::move(*scaled)) : nullptr;
}

/// The part of the image that is visible in `visible` when all of it goes into `target`.
BitmapPtr drawnPiece(const UIImage& image, const PixelBox& target, const PixelBox& visible) {
    const int orientation = exifFromImageOrientation(image.orientation());
    const BitmapPtr stored = image.bitmap(storedSize(target.width(), target.height(), orientation));
    if (!stored || stored->isEmpty()) {
        return nullptr;
    }
    const CGRect part = storedPart(partOf(target, visible), orientation);
    BitmapPtr piece = pieceOf(stored, part, storedSize(visible.width(), visible.height(), orientation));
    if (!piece || orientation == 1) {
        return piece;
    }
    return std::make_shared<const Bitmap>(turnedBitmap(*piece, orientation));
}

} // namespace

std::shared_ptr<UIImage> drawnImage(const UIImage& image, CGSize canvas, const CGRect& rect, double scale) {
    const auto size = canvasSize(canvas, scale);
    if (!size) {
        return nullptr;
    }
    const PixelBox whole = {0, 0, double(size->width), double(size->height)};
    const PixelBox target = pixelsOf(rect, scale);
    const PixelBox visible = target.isEmpty() ? PixelBox() : intersection(target, whole);
    BitmapPtr piece;
    if (!visible.isEmpty()) {
        piece = drawnPiece(image, target, visible);
        if (!piece) {
            return nullptr;
        }
    }
    if (visible == whole) {
        return UIImage::imageWithBitmap(piece, scale);
    }
    const Bitmap& drawn = piece ? *piece : Bitmap();
    auto bitmap = bitmapOnCanvas(
        drawn, static_cast<int>(visible.left), static_cast<int>(visible.top), size->width, size->height);
    return UIImage::imageWithBitmap(std::make_shared<const Bitmap>(std::move(bitmap)), scale);
}

} // namespace exifcard
