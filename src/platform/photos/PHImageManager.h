#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Value.h"
#include "platform/photos/PHImageRequestOptions.h"
#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIImage.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace exifcard {

class AVURLAsset;
class ImageRequests;
struct PHAsset;

/// Positive; 0 is no request.
using PHImageRequestID = std::int32_t;
inline constexpr PHImageRequestID kPHInvalidImageRequestID = 0;
/// The target size that asks for the picture as large as it is.
inline constexpr CGSize kPHImageManagerMaximumSize{-1, -1};

/// @param image  Upright, scale 1, decoded; null when there is none.
/// @param info   See PHImageInfoKeys.h; never null.
using PHImageResultHandler =
    std::function<void(const std::shared_ptr<UIImage>& image, const DictionaryPtr& info)>;
/// @param data         The file's bytes, unturned; nothing when there are none here.
/// @param dataUTI      "public.jpeg"; empty without data.
/// @param orientation  How the pixels are to be turned.
using PHImageDataResultHandler = std::function<void(const std::optional<Data>& data,
    const std::string& dataUTI,
    UIImageOrientation orientation,
    const DictionaryPtr& info)>;
/// @param video  Null when there is none here.
using PHVideoResultHandler =
    std::function<void(const std::shared_ptr<const AVURLAsset>& video, const DictionaryPtr& info)>;

/// Brings pictures, bytes and videos of assets. Thread-safe; requests run beside each other on queues of its
/// own.
///
/// A synchronous request calls its handler once, on the calling thread, before
/// it returns, whatever the delivery mode; it blocks, never on the main queue.
/// Asynchronous: pictures on the main queue; bytes and videos on a queue of the
/// manager. After `cancelImageRequest` a handler is not called, or once with
/// `PHImageCancelledKey`; otherwise exactly once, and a picture's in
/// opportunistic mode once or more: a degraded one first. Cancelled or not, no
/// lock is held while a handler runs.
class PHImageManager {
public:
    static PHImageManager& defaultManager();

    PHImageManager();
    virtual ~PHImageManager();
    PHImageManager(const PHImageManager&) = delete;
    PHImageManager& operator=(const PHImageManager&) = delete;

    /// @param targetSize  Pixels.
    virtual PHImageRequestID requestImageForAsset(const PHAsset& asset,
        CGSize targetSize,
        PHImageContentMode contentMode,
        const PHImageRequestOptions& options,
        PHImageResultHandler resultHandler);
    PHImageRequestID requestImageDataForAsset(
        const PHAsset& asset, const PHImageRequestOptions& options, PHImageDataResultHandler resultHandler);
    PHImageRequestID requestAVAssetForVideo(
        const PHAsset& asset, const PHVideoRequestOptions& options, PHVideoResultHandler resultHandler);
    /// Does nothing for a request that is unknown or finished.
    void cancelImageRequest(PHImageRequestID request);

protected:
    const std::shared_ptr<ImageRequests> _requests; ///< Outlives the manager while requests run.
};

} // namespace exifcard
