#include "platform/uivalues/BitmapGeometry.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace exifcard {
namespace {

/// How a code shows the stored pixels: first mirrored, then with rows and columns exchanged.
struct Turn {
    bool mirrorsColumns;
    bool mirrorsRows;
    bool exchanges;
};

// By EXIF code; index 0 is unused.
constexpr Turn kTurns[] = {
    {false, false, false},
    {false, false, false},
    {true, false, false},
    {true, true, false},
    {false, true, false},
    {false, false, true},
    {false, true, true},
    {true, true, true},
    {true, false, true},
};

Turn turnOf(int exifOrientation) {
    return kTurns[exifOrientation >= 1 && exifOrientation <= 8 ? exifOrientation : 1];
}

/// Where a turned bitmap's pixels come from, in pixels of the stored one.
struct PixelWalk {
    std::ptrdiff_t origin = 0;
    std::ptrdiff_t column = 1; ///< From one column of the result to the next.
    std::ptrdiff_t row = 0;    ///< From one row of the result to the next.
};

PixelWalk walkOf(const Bitmap& stored, Turn turn) {
    const std::ptrdiff_t width = stored.width;
    PixelWalk walk = {0, 1, width};
    if (turn.mirrorsColumns) {
        walk.origin += width - 1;
        walk.column = -1;
    }
    if (turn.mirrorsRows) {
        walk.origin += (stored.height - 1) * width;
        walk.row = -width;
    }
    if (turn.exchanges) {
        std::swap(walk.column, walk.row);
    }
    return walk;
}

Bitmap emptyBitmap(int width, int height, int channels) {
    Bitmap bitmap;
    bitmap.width = width;
    bitmap.height = height;
    bitmap.channels = channels;
    bitmap.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                         static_cast<std::size_t>(channels));
    return bitmap;
}

std::size_t offsetOf(const Bitmap& bitmap, int column, int row) {
    return (static_cast<std::size_t>(row) * static_cast<std::size_t>(bitmap.width) +
               static_cast<std::size_t>(column)) *
           static_cast<std::size_t>(bitmap.channels);
}

struct PixelBlock {
    int left;
    int top;
    int right;
    int bottom;
};

/// Copies a part of the result's rows and columns.
template<std::size_t channels>
void copyBlock(const Bitmap& stored, const PixelWalk& walk, Bitmap& result, const PixelBlock& block) {
    constexpr auto kStep = static_cast<std::ptrdiff_t>(channels);
    for (int y = block.top; y < block.bottom; ++y) {
        const std::uint8_t* const source = stored.pixels.data() + (walk.origin + y * walk.row) * kStep;
        std::uint8_t* const target = result.pixels.data() + offsetOf(result, 0, y);
        for (int x = block.left; x < block.right; ++x) {
            std::memcpy(target + x * kStep, source + x * walk.column * kStep, channels);
        }
    }
}

/// Block by block: with rows and columns exchanged, a whole row of the result would touch as many cache lines
/// as it has pixels.
template<std::size_t channels>
void copyTurned(const Bitmap& stored, const PixelWalk& walk, Bitmap& result) {
    constexpr int kBlock = 32;
    for (int top = 0; top < result.height; top += kBlock) {
        for (int left = 0; left < result.width; left += kBlock) {
            copyBlock<channels>(stored, walk, result,
                {left, top, std::min(left + kBlock, result.width), std::min(top + kBlock, result.height)});
        }
    }
}

/// One row as RGB and alpha.
void copyWithAlpha(const std::uint8_t* source, int channels, std::uint8_t* target, int width) {
    const std::ptrdiff_t green = channels == 1 ? 0 : 1;
    for (int column = 0; column < width; ++column, source += channels, target += 4) {
        target[0] = source[0];
        target[1] = source[green];
        target[2] = source[2 * green];
        target[3] = channels == 4 ? source[3] : 255;
    }
}

} // namespace

int inverseOrientation(int exifOrientation) {
    constexpr int kRight = 6;
    constexpr int kLeft = 8;
    if (exifOrientation == kRight || exifOrientation == kLeft) {
        return kRight + kLeft - exifOrientation;
    }
    return exifOrientation;
}

bool isQuarterTurn(int exifOrientation) {
    return turnOf(exifOrientation).exchanges;
}

Bitmap turnedBitmap(const Bitmap& stored, int exifOrientation) {
    const Turn turn = turnOf(exifOrientation);
    Bitmap result = turn.exchanges ? emptyBitmap(stored.height, stored.width, stored.channels)
                                   : emptyBitmap(stored.width, stored.height, stored.channels);
    result.iccProfile = stored.iccProfile;
    const PixelWalk walk = walkOf(stored, turn);
    if (stored.channels == 1) {
        copyTurned<1>(stored, walk, result);
    } else if (stored.channels == 3) {
        copyTurned<3>(stored, walk, result);
    } else {
        copyTurned<4>(stored, walk, result);
    }
    return result;
}

CGRect storedPart(const CGRect& part, int exifOrientation) {
    const Turn turn = turnOf(exifOrientation);
    CGRect stored = part;
    if (turn.exchanges) {
        stored = {{part.origin.y, part.origin.x}, {part.size.height, part.size.width}};
    }
    if (turn.mirrorsColumns) {
        stored.origin.x = 1 - stored.origin.x - stored.size.width;
    }
    if (turn.mirrorsRows) {
        stored.origin.y = 1 - stored.origin.y - stored.size.height;
    }
    return stored;
}

Bitmap croppedBitmap(const Bitmap& bitmap, int left, int top, int width, int height) {
    Bitmap result = emptyBitmap(width, height, bitmap.channels);
    result.iccProfile = bitmap.iccProfile;
    const std::size_t rowSize = static_cast<std::size_t>(width) * static_cast<std::size_t>(bitmap.channels);
    for (int row = 0; row < height; ++row) {
        std::memcpy(result.pixels.data() + offsetOf(result, 0, row),
            bitmap.pixels.data() + offsetOf(bitmap, left, top + row), rowSize);
    }
    return result;
}

Bitmap bitmapOnCanvas(const Bitmap& bitmap, int left, int top, int width, int height) {
    Bitmap canvas = emptyBitmap(width, height, 4);
    if (bitmap.channels > 1) {
        canvas.iccProfile = bitmap.iccProfile; // A profile for grey does not fit RGB.
    }
    for (int row = 0; row < bitmap.height; ++row) {
        copyWithAlpha(bitmap.pixels.data() + offsetOf(bitmap, 0, row), bitmap.channels,
            canvas.pixels.data() + offsetOf(canvas, left, top + row), bitmap.width);
    }
    return canvas;
}

} // namespace exifcard
