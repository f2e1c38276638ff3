#pragma once

#include "platform/foundation/DispatchQueue.h"
#include "platform/photos/PHImageManager.h"
#include "platform/photos/PictureMaker.h"
#include "platform/photos/RequestTable.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace exifcard {

/// The requests of one image manager; they live on when the manager ends. Thread-safe.
class ImageRequests : public std::enable_shared_from_this<ImageRequests> {
public:
    ImageRequests();

    PHImageRequestID requestImage(const PHAsset& asset,
        const WantedPicture& wanted,
        const PHImageRequestOptions& options,
        PHImageResultHandler handler);
    PHImageRequestID requestData(
        const PHAsset& asset, const PHImageRequestOptions& options, PHImageDataResultHandler handler);
    PHImageRequestID requestVideo(
        const PHAsset& asset, const PHVideoRequestOptions& options, PHVideoResultHandler handler);
    void cancel(PHImageRequestID request) { _table.cancel(request); }

    /// Makes the picture, unless `stopCaching` comes first, and keeps it in memory as long as there is room.
    void startCaching(const PHAsset& asset, const WantedPicture& wanted);
    void stopCaching(const PHAsset& asset, const WantedPicture& wanted);
    void stopCachingAll();

private:
    struct PictureRequest {
        RequestStatePtr state;
        PictureOrder order; ///< Its file is found when the request runs.
        PHImageRequestOptions options;
        PHImageResultHandler handler;
    };
    using PictureRequestPtr = std::shared_ptr<const PictureRequest>;

    void runPicture(const PictureRequestPtr& request);
    void runData(const RequestStatePtr& state,
        const std::optional<StoredFile>& file,
        const PHImageRequestOptions& options,
        const PHImageDataResultHandler& handler);
    void deliver(const PictureRequestPtr& request, const std::shared_ptr<UIImage>& picture, bool isDegraded);
    void finish(const PictureRequestPtr& request,
        const std::shared_ptr<UIImage>& picture,
        bool isDegraded,
        const BroughtFile& file);
    void cache(const PictureOrder& order);

    const std::shared_ptr<DispatchQueue> _queue;
    RequestTable _table;
    PictureMaker _pictures;
    std::mutex _cachingMutex;
    std::set<std::string> _caching; ///< Keys of pictures that are to be made. Guarded by _cachingMutex.
};

} // namespace exifcard
