#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIImage.h"

#include <functional>
#include <memory>
#include <optional>

namespace exifcard {

// Class operations on UIImage. Those that scale, rotate or round draw at once and block; any thread. A null
// image gives null, and so does one that does not decode.

/// The angle in degrees by which an orientation is turned: 0, 180, 90 (left), -90 (right); 0 for the mirrored
/// ones.
float degreeOfOrientation(UIImageOrientation orientation);

/// The stored pixels, taken for upright at scale 1; nothing is drawn.
/// @param orientation  Only for the log.
std::shared_ptr<UIImage> rotateUIImage(const std::shared_ptr<UIImage>& image, UIImageOrientation orientation);

/// A square canvas at scale 1, as long as the longer side of the image, with the image turned clockwise
/// round its middle and stretched to the square.
std::shared_ptr<UIImage> rotateImage(const std::shared_ptr<UIImage>& image, float degrees);

/// A canvas of `size` points at scale 1 with the whole image in `rect`.
std::shared_ptr<UIImage> imageWithImageScaledToSizeInRect(
    const std::shared_ptr<UIImage>& image, CGSize size, const CGRect& rect);

/// The image shrunk to fit into `size` points of the screen, measured in its pixels. One that is smaller both
/// ways comes back unchanged; one that is smaller only one way, or as large, is drawn too.
std::shared_ptr<UIImage> imageWithImageScaledToFitToSize(const std::shared_ptr<UIImage>& image, CGSize size);

/// The middle of the image so scaled that it covers `size`, in points whatever the screen. One that is
/// smaller both ways comes back unchanged.
std::shared_ptr<UIImage> imageWithImageScaledToFillToSize(const std::shared_ptr<UIImage>& image, CGSize size);

/// The image at the screen's scale, transparent beyond its rounded corners.
/// @param radius  In points; at most half the shorter side.
std::shared_ptr<UIImage> imageWithRoundedCornersRadius(const std::shared_ptr<UIImage>& image, float radius);

/// Writes the bytes into the temporary folder and loads an image of that file, on a queue of high priority.
/// The completion runs there, once, but not where the folder "largeImage" cannot be made. It gets no image
/// as a rule: that is handed over on the main queue, which the completion does not wait for.
void imageWithVeryLargeNSData(const std::optional<Data>& data,
    std::function<void(const std::shared_ptr<UIImage>& image)> completionBlock);

/// The developed picture of a camera's raw file, upright; it is made when it is drawn. Null for other bytes.
std::shared_ptr<UIImage> imageFromDNGImageNSData(const Data& data);

/// A picture at the screen's scale, in the orientation that its bytes tell. Up to a megapixel of 8 bits a
/// channel it is decoded at once, so that drawing it costs little; larger ones are decoded when they are
/// drawn. Null without data, and for what does not decode.
std::shared_ptr<UIImage> imageFromRAWData(const std::optional<Data>& data);

/// The first picture of a source, upright and at most 512 pixels long and wide, made from the full picture
/// and never enlarged. Its size is known at once; it is decoded each time that it is drawn, and then gives
/// null where it does not decode. Null for a null source and for what is no picture.
std::shared_ptr<UIImage> thumbNailImageFromImageSource(const CGImageSourcePtr& source);
/// The same of a source whose properties have been read already; null gives null.
std::shared_ptr<UIImage> thumbNailImageFromImageSource(
    const CGImageSourcePtr& source, const DictionaryPtr& properties);

} // namespace exifcard
