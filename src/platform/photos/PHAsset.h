#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Date.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace exifcard {

enum class PHAssetMediaType : std::int64_t { Unknown = 0, Image = 1, Video = 2, Audio = 3 };

/// One photo or video of the library, as it was when it was fetched: immutable, fetched anew to see a change.
struct PHAsset {
    std::string localIdentifier = {}; ///< "CC95F08C-88C3-4012-9D6D-64A413D254B3/L0/001"
    PHAssetMediaType mediaType = PHAssetMediaType::Unknown;
    std::uint64_t mediaSubtypes = 0; ///< Bits: panorama 1, HDR 2, screenshot 4, live photo 8 and so on.
    std::int64_t pixelWidth = 0;     ///< Upright.
    std::int64_t pixelHeight = 0;
    std::optional<Date> creationDate = std::nullopt;
    std::optional<Date> modificationDate = std::nullopt;
    std::optional<CLLocation> location = std::nullopt;
    double duration = 0; ///< Seconds; 0 for photos.
    bool isFavorite = false;
    bool isHidden = false;
};

/// The bit of `mediaSubtypes` that marks a live photo.
inline constexpr std::uint64_t kPHAssetMediaSubtypePhotoLive = 8;

} // namespace exifcard
