#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Date.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/import/EmbeddedVideo.h"

#include <cstdint>
#include <optional>
#include <string>

namespace exifcard {

/// What the library keeps of the content of one picture or video.
struct MediaFacts {
    PHAssetMediaType mediaType = PHAssetMediaType::Image;
    std::uint64_t mediaSubtypes = 0; ///< As `PHAsset` has them, but for a live photo of two files.
    std::int64_t pixelWidth = 0;     ///< Upright; 0 when unknown.
    std::int64_t pixelHeight = 0;
    int orientation = 0; ///< EXIF, 1 to 8, of a picture; 0 when unknown.
    double duration = 0; ///< Seconds; 0 for pictures.
    bool isAnimated = false;
    std::optional<Date> captureDate;
    std::optional<CLLocation> location;
    std::optional<std::string> title;
    std::optional<std::int64_t> rating;         ///< Stars.
    std::string typeIdentifier;                 ///< "public.jpeg"
    std::string contentIdentifier;              ///< The same in both halves of a live photo; may be empty.
    std::string burstIdentifier;                ///< The same in all pictures of a burst; may be empty.
    std::optional<EmbeddedVideo> embeddedVideo; ///< Of a motion photo.
};

} // namespace exifcard
