#pragma once

#include "platform/foundation/Value.h"
#include "platform/photos/PHError.h"
#include "platform/uivalues/CGGeometry.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace exifcard {

enum class PHImageContentMode : std::int64_t { AspectFit = 0, AspectFill = 1 };

enum class PHImageRequestOptionsVersion : std::int64_t {
    Current = 0,    ///< With all edits; of a RAW + JPEG pair the JPEG.
    Unadjusted = 1, ///< The original.
    Original = 2
};

enum class PHImageRequestOptionsDeliveryMode : std::int64_t {
    Opportunistic = 0, ///< One or more results, each better than the one before.
    HighQualityFormat = 1,
    FastFormat = 2 ///< One result, maybe of low quality.
};

enum class PHImageRequestOptionsResizeMode : std::int64_t {
    None = 0,
    Fast = 1, ///< At least about the target, maybe larger.
    Exact = 2
};

/// Told while an original is being brought here, on any thread but the main one.
/// @param progress  0 … 1.
/// @param error     Why it failed; then it is the last call.
/// @param stop      Set true to cancel.
using PHProgressHandler = std::function<void(
    double progress, const std::optional<PHError>& error, bool& stop, const DictionaryPtr& info)>;

/// How a picture is wanted.
struct PHImageRequestOptions {
    PHImageRequestOptionsVersion version = PHImageRequestOptionsVersion::Current;
    PHImageRequestOptionsDeliveryMode deliveryMode = PHImageRequestOptionsDeliveryMode::Opportunistic;
    PHImageRequestOptionsResizeMode resizeMode = PHImageRequestOptionsResizeMode::Fast;
    CGRect normalizedCropRect =
        {}; ///< In 0 … 1 of the upright picture; without area: all. With `Exact` only.
    bool networkAccessAllowed = false; ///< Whether an original that lies elsewhere may be brought.
    bool synchronous = false;
    PHProgressHandler progressHandler = {}; ///< May be empty.
};

enum class PHVideoRequestOptionsVersion : std::int64_t { Current = 0, Original = 1 };
enum class PHVideoRequestOptionsDeliveryMode : std::int64_t {
    Automatic = 0,
    HighQualityFormat = 1,
    MediumQualityFormat = 2,
    FastFormat = 3
};

/// How a video is wanted.
struct PHVideoRequestOptions {
    bool networkAccessAllowed = false;
    PHVideoRequestOptionsVersion version = PHVideoRequestOptionsVersion::Current;
    PHVideoRequestOptionsDeliveryMode deliveryMode = PHVideoRequestOptionsDeliveryMode::Automatic;
    PHProgressHandler progressHandler = {};
};

} // namespace exifcard
