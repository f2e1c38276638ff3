#pragma once

#include "platform/imageio/PixelCoder.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace exifcard {

// What the loadable module of raw pictures offers. Header-only: program and module share no other code.

struct RawFacts {
    PixelSize size;          ///< Of the developed picture, before its turn.
    int exifOrientation = 1; ///< 1 to 8.
};

/// One of both.
struct RawPreview {
    std::vector<std::uint8_t> jpeg;
    Bitmap bitmap;
};

/// Develops cameras' raw pictures. Safe to call on any thread; blocks. The bytes are untrusted. Nothing is
/// turned.
class RawDeveloper {
public:
    RawDeveloper() = default;
    RawDeveloper(const RawDeveloper&) = delete;
    RawDeveloper& operator=(const RawDeveloper&) = delete;

    /// Decodes no pixel. Nothing for what is no raw picture of a known camera.
    virtual std::optional<RawFacts> facts(std::span<const std::uint8_t> file) const = 0;

    /// The largest finished picture that the camera put into the file; nothing without one.
    virtual std::optional<RawPreview> preview(std::span<const std::uint8_t> file) const = 0;

    /// The picture in sRGB, with the camera's own white balance.
    /// @param wanted  The smallest size that will do: where half the size holds it, half is developed.
    virtual std::optional<Bitmap> develop(
        std::span<const std::uint8_t> file, std::optional<PixelSize> wanted) const = 0;

protected:
    ~RawDeveloper() = default;
};

/// What the module exports under this name.
using RawDeveloperEntry = const RawDeveloper*();
inline constexpr const char* kRawDeveloperEntry = "exifcardRawDeveloper";

} // namespace exifcard
