#pragma once

#include "platform/imageio/RawDeveloper.h"

namespace exifcard {

/// Raw pictures through LibRaw.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through its base.
class RawDecoder final : public RawDeveloper {
public:
    std::optional<RawFacts> facts(std::span<const std::uint8_t> file) const override;
    std::optional<RawPreview> preview(std::span<const std::uint8_t> file) const override;
    std::optional<Bitmap> develop(
        std::span<const std::uint8_t> file, std::optional<PixelSize> wanted) const override;
};

} // namespace exifcard
