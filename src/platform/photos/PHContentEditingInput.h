#pragma once

#include "platform/foundation/URL.h"
#include "platform/foundation/Value.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace exifcard {

struct PHAsset;

/// Positive; 0 is no request.
using PHContentEditingInputRequestID = std::int32_t;

struct PHContentEditingInputRequestOptions {
    bool networkAccessAllowed = false;
    /// Told while the file is brought here; `stop` cancels.
    std::function<void(double progress, bool& stop)> progressHandler = {};
};

/// The file of an asset at full size.
struct PHContentEditingInput {
    std::optional<URL> fullSizeImageURL; ///< The current rendition's file; nothing for a video.
    std::string uniformTypeIdentifier;
    int fullSizeImageOrientation = 1; ///< EXIF, 1 to 8.
};

/// @param input  Null where the file lies elsewhere and may not be brought, or cannot be.
/// @param info   "PHContentEditingInputResultIsInCloudKey" and its kin; never null.
using PHContentEditingInputHandler =
    std::function<void(const std::shared_ptr<const PHContentEditingInput>& input, const DictionaryPtr& info)>;

/// The asset's `requestContentEditingInputWithOptions:completionHandler:`. Answers at once; the handler is
/// called once, on a queue of the library.
PHContentEditingInputRequestID requestContentEditingInputWithOptions(const PHAsset& asset,
    const PHContentEditingInputRequestOptions& options,
    PHContentEditingInputHandler completionHandler);
/// The handler comes with "PHContentEditingInputCancelledKey"; nothing for an unknown or finished request.
void cancelContentEditingInputRequest(PHContentEditingInputRequestID request);

} // namespace exifcard
