#pragma once

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/uivalues/UIImage.h"

#include <memory>

namespace exifcard {

struct CGImageThumbnailOptions {
    int maximumPixelSize = 0;           ///< Of the longer side; 0 for none.
    bool createFromImageAlways = false; ///< Or else from a thumbnail in the file, where one is large enough.
    bool createWithTransform = false;   ///< Upright; otherwise as stored.
};

/// A small picture of the first image, of its shape and never larger than it. Its
/// size is known at once; it is decoded each time that it is drawn, and then gives
/// null where it does not decode.
/// @param properties  Of the image at index 0, read already; null gives null.
std::shared_ptr<UIImage> CGImageSourceCreateThumbnail(
    const CGImageSource& source, const DictionaryPtr& properties, const CGImageThumbnailOptions& options);

} // namespace exifcard
