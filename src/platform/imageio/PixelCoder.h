#pragma once

#include "platform/uivalues/Bitmap.h"
#include "platform/uivalues/CGGeometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace exifcard {

// What the loadable modules of pixels offer. Header-only: program and module share no other code.

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

/// The largest camera sensors have some 200 megapixels; a picture is decoded to
/// at most this many, which take 1 GiB with alpha.
inline constexpr std::size_t kMaximumDecodedPixels = std::size_t(256) << 20U;

struct EncodingOptions {
    int jpegQuality = 90;                 ///< 1 to 100.
    std::span<const std::uint8_t> exif{}; ///< A JPEG's own Exif block, from its TIFF header on; empty: none.
};

/// Decodes and encodes pictures. Safe to call on any thread; blocks.
class PixelCoder {
public:
    PixelCoder() = default;
    PixelCoder(const PixelCoder&) = delete;
    PixelCoder& operator=(const PixelCoder&) = delete;

    /// Decodes the first picture to 8 bits a channel. Nothing is turned, but for
    /// HEIF and AVIF, which come out as their boxes ask to show them.
    ///
    /// @param bytes   Untrusted. A picture that is cut short shows what there is.
    /// @param type    What they are, such as "public.png".
    /// @param wanted  The smallest size that will do: a larger picture is scaled
    ///                down to it, or on one side to a little more, as its shape
    ///                asks. Without one, the size in which it is stored.
    /// @return Nothing when this coder cannot decode it.
    virtual std::optional<Bitmap> decode(std::span<const std::uint8_t> bytes,
        std::string_view type,
        std::optional<PixelSize> wanted) const = 0;

    /// The bytes of a file with the bitmap's profile, and no other metadata but what the options give. A JPEG
    /// shows what is transparent on white.
    /// @param type  "public.jpeg" or "public.png".
    /// @return Empty when this coder does not write that type or has no memory for it.
    virtual std::vector<std::uint8_t> encode(
        const Bitmap& bitmap, std::string_view type, const EncodingOptions& options) const = 0;

protected:
    ~PixelCoder() = default;
};

/// Scales bitmaps. Safe to call on any thread; blocks.
class BitmapScaler {
public:
    BitmapScaler() = default;
    BitmapScaler(const BitmapScaler&) = delete;
    BitmapScaler& operator=(const BitmapScaler&) = delete;

    /// A part of the bitmap at another size, in the same colours.
    /// @param region  In pixels, within the bitmap, fractions allowed.
    /// @return Nothing when a size is out of reason.
    virtual std::optional<Bitmap> resampled(
        const Bitmap& bitmap, const CGRect& region, PixelSize size) const = 0;

protected:
    ~BitmapScaler() = default;
};

/// Turns, shears and moves bitmaps. Safe to call on any thread; blocks.
class BitmapTransformer {
public:
    BitmapTransformer() = default;
    BitmapTransformer(const BitmapTransformer&) = delete;
    BitmapTransformer& operator=(const BitmapTransformer&) = delete;

    /// The bitmap on a transparent canvas.
    /// @param toCanvas  Where a point of the bitmap goes, in pixels; y points down.
    /// @return Nothing when a size is out of reason or the transform has no area.
    virtual std::optional<Bitmap> transformed(
        const Bitmap& bitmap, const CGAffineTransform& toCanvas, PixelSize canvas) const = 0;

protected:
    ~BitmapTransformer() = default;
};

/// What a module exports under these names.
using PixelCoderEntry = const PixelCoder*();
using BitmapScalerEntry = const BitmapScaler*();
using BitmapTransformerEntry = const BitmapTransformer*();
inline constexpr const char* kPixelCoderEntry = "exifcardPixelCoder";
inline constexpr const char* kBitmapScalerEntry = "exifcardBitmapScaler";
inline constexpr const char* kBitmapTransformerEntry = "exifcardBitmapTransformer";

} // namespace exifcard
