#include "platform/photos/PHImageManager.h"

#include "platform/photos/ImageRequests.h"
#include "platform/photos/PHCachingImageManager.h"

#include <utility>

namespace exifcard {
namespace {

WantedPicture wantedPicture(
    CGSize targetSize, PHImageContentMode contentMode, const PHImageRequestOptions& options) {
    return {
        .targetSize = targetSize,
        .contentMode = contentMode,
        .resizeMode = options.resizeMode,
        .version = options.version,
        .crop = options.normalizedCropRect,
    };
}

} // namespace

PHImageManager& PHImageManager::defaultManager() {
    static auto* const manager = new PHImageManager; // Requests may end after everything else.
    return *manager;
}

PHImageManager::PHImageManager() : _requests(std::make_shared<ImageRequests>()) {
}

PHImageManager::~PHImageManager() = default;

PHImageRequestID PHImageManager::requestImageForAsset(const PHAsset& asset,
    CGSize targetSize,
    PHImageContentMode contentMode,
    const PHImageRequestOptions& options,
    PHImageResultHandler resultHandler) {
    return _requests->requestImage(
        asset, wantedPicture(targetSize, contentMode, options), options, std::move(resultHandler));
}

PHImageRequestID PHImageManager::requestImageDataForAsset(
    const PHAsset& asset, const PHImageRequestOptions& options, PHImageDataResultHandler resultHandler) {
    return _requests->requestData(asset, options, std::move(resultHandler));
}

PHImageRequestID PHImageManager::requestAVAssetForVideo(
    const PHAsset& asset, const PHVideoRequestOptions& options, PHVideoResultHandler resultHandler) {
    return _requests->requestVideo(asset, options, std::move(resultHandler));
}

void PHImageManager::cancelImageRequest(PHImageRequestID request) {
    _requests->cancel(request);
}

void PHCachingImageManager::startCachingImagesForAssets(
    std::span<const std::shared_ptr<const PHAsset>> assets,
    CGSize targetSize,
    PHImageContentMode contentMode,
    const PHImageRequestOptions& options) {
    for (const auto& asset : assets) {
        if (asset) {
            _requests->startCaching(*asset, wantedPicture(targetSize, contentMode, options));
        }
    }
}

void PHCachingImageManager::stopCachingImagesForAssets(std::span<const std::shared_ptr<const PHAsset>> assets,
    CGSize targetSize,
    PHImageContentMode contentMode,
    const PHImageRequestOptions& options) {
    for (const auto& asset : assets) {
        if (asset) {
            _requests->stopCaching(*asset, wantedPicture(targetSize, contentMode, options));
        }
    }
}

void PHCachingImageManager::stopCachingImagesForAllAssets() {
    _requests->stopCachingAll();
}

} // namespace exifcard
