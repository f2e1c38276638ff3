#pragma once

#include "platform/imageio/CGImageSource.h"
#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIImage.h"

#include <memory>

namespace exifcard {

// Class operations on UIImage. Each but the last draws at once and blocks; any thread. A null image gives
// null, and so does one that does not decode.

/// The angle in degrees by which an orientation is turned: 0, 180, 90 (left), -90 (right); 0 for the mirrored
/// ones.
float degreeOfOrientation(UIImageOrientation orientation);

/// A canvas of `size` points at scale 1 with the whole image in `rect`.
std::shared_ptr<UIImage> imageWithImageScaledToSizeInRect(
    const std::shared_ptr<UIImage>& image, CGSize size, const CGRect& rect);

/// The image shrunk to fit into `size` points of the screen, measured in its pixels. One that is smaller both
/// ways comes back unchanged; one that is smaller only one way, or as large, is drawn too.
std::shared_ptr<UIImage> imageWithImageScaledToFitToSize(const std::shared_ptr<UIImage>& image, CGSize size);

/// The middle of the image so scaled that it covers `size`, in points whatever the screen. One that is
/// smaller both ways comes back unchanged.
std::shared_ptr<UIImage> imageWithImageScaledToFillToSize(const std::shared_ptr<UIImage>& image, CGSize size);

/// The first picture of a source, upright and at most 512 pixels long and wide, made from the full picture
/// and never enlarged. Its size is known at once; it is decoded each time that it is drawn, and then gives
/// null where it does not decode. Null for a null source and for what is no picture.
std::shared_ptr<UIImage> thumbNailImageFromImageSource(const CGImageSourcePtr& source);
/// The same of a source whose properties have been read already; null gives null.
std::shared_ptr<UIImage> thumbNailImageFromImageSource(
    const CGImageSourcePtr& source, const DictionaryPtr& properties);

} // namespace exifcard
