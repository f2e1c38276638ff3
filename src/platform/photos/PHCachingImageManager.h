#pragma once

#include "platform/photos/PHImageManager.h"

#include <memory>
#include <span>

namespace exifcard {

/// An image manager that prepares pictures before they are asked for. A later request of the same size, mode
/// and options finds them; requests work the same without.
class PHCachingImageManager : public PHImageManager {
public:
    PHCachingImageManager() = default;

    void startCachingImagesForAssets(std::span<const std::shared_ptr<const PHAsset>> assets,
        CGSize targetSize,
        PHImageContentMode contentMode,
        const PHImageRequestOptions& options);
    void stopCachingImagesForAssets(std::span<const std::shared_ptr<const PHAsset>> assets,
        CGSize targetSize,
        PHImageContentMode contentMode,
        const PHImageRequestOptions& options);
    void stopCachingImagesForAllAssets();
};

} // namespace exifcard
