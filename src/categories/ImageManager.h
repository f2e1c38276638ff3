#pragma once

#include "platform/photos/PHCachingImageManager.h"

namespace exifcard {

/// Where every picture of the cards is asked for. One a process; thread-safe.
class ImageManager {
public:
    static ImageManager& sharedInstance();
    ImageManager(const ImageManager&) = delete;
    ImageManager& operator=(const ImageManager&) = delete;

    PHCachingImageManager& imageCachingManager() { return _imageCachingManager; }

private:
    ImageManager() = default;

    PHCachingImageManager _imageCachingManager;
};

} // namespace exifcard
