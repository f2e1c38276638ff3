#pragma once

#include "platform/foundation/Data.h"
#include "platform/photos/PHError.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace exifcard {

struct PHAssetResource;

/// Positive; 0 is no request.
using PHAssetResourceDataRequestID = std::int32_t;

struct PHAssetResourceRequestOptions {
    bool networkAccessAllowed = false;
    std::function<void(double progress)> progressHandler = {}; ///< Told while bytes are brought here.
};

/// Hands out the bytes of one file of an asset.
class PHAssetResourceManager {
public:
    static PHAssetResourceManager& defaultManager();
    PHAssetResourceManager(const PHAssetResourceManager&) = delete;
    PHAssetResourceManager& operator=(const PHAssetResourceManager&) = delete;

    /// Answers at once. The chunks come in order, then the completion once, one after the other on a queue of
    /// the library. Bytes that lie elsewhere, without network access: `NetworkAccessRequired`.
    PHAssetResourceDataRequestID requestDataForAssetResource(const PHAssetResource& resource,
        const PHAssetResourceRequestOptions& options,
        std::function<void(const Data& chunk)> dataReceivedHandler,
        std::function<void(const std::optional<PHError>& error)> completionHandler);
    /// The completion comes with `UserCancelled`; nothing for an unknown or finished request.
    void cancelDataRequest(PHAssetResourceDataRequestID request);

private:
    PHAssetResourceManager() = default;
};

} // namespace exifcard
