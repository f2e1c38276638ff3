#include "platform/imageio/ImageDrawing.h"

#include "platform/imageio/PixelModules.h"
#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/BitmapGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace exifcard {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint16_t kShort = 3;
constexpr std::uint16_t kLong = 4;

struct TiffEntry {
    std::uint16_t tag;
    std::uint16_t type;
    std::uint32_t value;
};

void append(Bytes& bytes, std::uint32_t number, std::size_t byteCount) {
    for (std::size_t index = byteCount; index > 0; --index) {
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * (index - 1))));
    }
}

std::uint32_t directorySize(std::size_t entryCount) {
    return static_cast<std::uint32_t>(
        2 + entryCount * 12 + 4); // Count, entries, place of the next directory.
}

void appendDirectory(Bytes& bytes, const std::vector<TiffEntry>& entries) {
    append(bytes, static_cast<std::uint32_t>(entries.size()), 2);
    for (const TiffEntry& entry : entries) {
        append(bytes, entry.tag, 2);
        append(bytes, entry.type, 2);
        append(bytes, 1, 4);
        append(
            bytes, entry.type == kShort ? entry.value << 16U : entry.value, 4); // A short stands at the left.
    }
    append(bytes, 0, 4);
}

/// What the platform's JPEG encoder writes by itself: the size, whether the colours are sRGB, and the
/// orientation where it is not up.
Bytes exifOf(const Bitmap& bitmap, int orientation) {
    constexpr std::uint32_t kFirstDirectory = 8;
    constexpr std::uint32_t kSrgb = 1;
    constexpr std::uint32_t kUncalibrated = 0xFFFF; // The profile tells.
    std::vector<TiffEntry> directory;
    if (orientation != 1) {
        directory.push_back({0x0112, kShort, static_cast<std::uint32_t>(orientation)});
    }
    const std::uint32_t exifDirectory = kFirstDirectory + directorySize(directory.size() + 1);
    directory.push_back({0x8769, kLong, exifDirectory});
    const Bytes start = {'M', 'M', 0, '*'};
    Bytes exif = start;
    append(exif, kFirstDirectory, 4);
    appendDirectory(exif, directory);
    appendDirectory(exif, {{0xA001, kShort, bitmap.iccProfile.empty() ? kSrgb : kUncalibrated},
                              {0xA002, kLong, static_cast<std::uint32_t>(bitmap.width)},
                              {0xA003, kLong, static_cast<std::uint32_t>(bitmap.height)}});
    return exif;
}

int jpegQuality(double quality) {
    const double percent = std::round(quality * 100);
    return percent >= 1 ? static_cast<int>(std::min(percent, 100.0)) : 1;
}

} // namespace

Data UIImageJPEGRepresentation(const UIImage& image, double quality) {
    const auto bitmap = image.bitmap();
    if (!bitmap) {
        return {};
    }
    const Bytes exif = exifOf(*bitmap, exifFromImageOrientation(image.orientation()));
    return Data::fromBytes(encodedBitmap(*bitmap, "public.jpeg", {jpegQuality(quality), exif}));
}

Data UIImagePNGRepresentation(const UIImage& image) {
    const auto bitmap = image.bitmap();
    if (!bitmap) {
        return {};
    }
    const int orientation = exifFromImageOrientation(image.orientation());
    const auto encode = [](const Bitmap& upright) {
        return Data::fromBytes(encodedBitmap(upright, "public.png", {}));
    };
    return orientation == 1 ? encode(*bitmap) : encode(turnedBitmap(*bitmap, orientation));
}

} // namespace exifcard
