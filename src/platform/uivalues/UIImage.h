#pragma once

#include "platform/uivalues/CGGeometry.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace exifcard {

struct Bitmap;

/// How stored pixels are to be turned; the platform's numbers.
enum class UIImageOrientation {
    Up = 0,
    Down = 1,
    Left = 2,
    Right = 3,
    UpMirrored = 4,
    DownMirrored = 5,
    LeftMirrored = 6,
    RightMirrored = 7,
};

/// The orientation of an EXIF code 1 to 8; up for any other.
UIImageOrientation imageOrientationFromExif(std::int64_t exifOrientation);
/// The EXIF code 1 to 8.
int exifFromImageOrientation(UIImageOrientation orientation);

/// Where an image's pixels come from when they are first wanted.
class PixelSource {
public:
    PixelSource() = default;
    virtual ~PixelSource() = default;
    PixelSource(const PixelSource&) = delete;
    PixelSource& operator=(const PixelSource&) = delete;

    /// Pixels as they are stored, before orientation. Decoding may stop at a
    /// smaller size whose sides are both at least `smallest` (in stored
    /// direction); without one it is the full size. Safe to call on any thread.
    /// @return Null when the bytes do not decode.
    virtual std::shared_ptr<const Bitmap> decode(std::optional<CGSize> smallest) const = 0;
    /// Whether `decode` only answers what is there, so that the main queue may call it.
    virtual bool isDecoded() const { return false; }
};

/// A picture: size and orientation are known at once, pixels are decoded when
/// they are first drawn. Immutable; shared by pointer.
class UIImage {
public:
    /// @param storedWidth,storedHeight  Pixels before orientation, greater than 0.
    UIImage(std::shared_ptr<const PixelSource> source,
        int storedWidth,
        int storedHeight,
        UIImageOrientation orientation = UIImageOrientation::Up,
        double scale = 1);
    /// An upright image of these pixels.
    static std::shared_ptr<UIImage> imageWithBitmap(std::shared_ptr<const Bitmap> bitmap, double scale = 1);

    /// Upright, in points: pixels ÷ scale.
    CGSize size() const;
    double scale() const { return _scale; }
    UIImageOrientation orientation() const { return _orientation; }
    int storedWidth() const { return _storedWidth; }
    int storedHeight() const { return _storedHeight; }

    /// The stored pixels, decoded by this call; see `PixelSource::decode`. Blocks.
    std::shared_ptr<const Bitmap> bitmap(std::optional<CGSize> smallest = std::nullopt) const;

    const std::shared_ptr<const PixelSource>& pixelSource() const { return _source; }

private:
    std::shared_ptr<const PixelSource> _source;
    int _storedWidth;
    int _storedHeight;
    UIImageOrientation _orientation;
    double _scale;
};

} // namespace exifcard
