#pragma once

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/OperationQueue.h"

#include <memory>

namespace exifcard {

/// The queues that the rooms share, each made once with its own limit.
class QueueManager {
public:
    static QueueManager& sharedInstance();
    QueueManager(const QueueManager&) = delete;
    QueueManager& operator=(const QueueManager&) = delete;

    const std::shared_ptr<DispatchQueue> completeEXIFFetchingQueue;
    const std::shared_ptr<DispatchQueue> rawFileProcessingQueue;

    OperationQueue imageTransferOperationQueue{8};
    OperationQueue imageScaleDownOperationQueue{16};
    OperationQueue prefetchImageScaleDownOperationQueue{10};
    OperationQueue fileNamePHAssetResourceSerialOperationQueue{1};
    OperationQueue albumImageTransferOperationQueue{8};
    OperationQueue fullScreenImageLoadingOperationQueue{1};
    OperationQueue iCloudImageDownloadOperationQueue{1};
    OperationQueue exifCardTVImageFetchOperationQueue{5};
    OperationQueue exifCardTVEXIFFetchOperationQueue{5};
    OperationQueue exifFetchingOperationQueueForAppleTV{5};

private:
    QueueManager();
};

} // namespace exifcard
