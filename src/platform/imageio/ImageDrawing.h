#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/uivalues/CGGeometry.h"
#include "platform/uivalues/UIImage.h"

#include <memory>

namespace exifcard {

/// A picture of its bytes, in the orientation that they tell, at scale 1. Only
/// the header is read; the pixels are decoded when they are first drawn, those
/// of a camera's raw file from a preview in it where one is large enough.
/// @return Null for what is no picture or one of a kind that has no decoder here.
std::shared_ptr<UIImage> imageWithData(const Data& data);

/// The same of a source whose properties have been read already, so that its header is not read twice.
/// @param properties  Of the image at index 0; null gives null.
std::shared_ptr<UIImage> imageWithSource(const CGImageSource& source, const DictionaryPtr& properties);

/// Draws an image upright into a transparent canvas.
///
/// Blocks; any thread. The image is decoded at about the size in which it is
/// drawn, and its colour profile goes along. Its edges are moved outward to whole
/// pixels, so that no half-transparent border arises.
///
/// @param canvas  In points.
/// @param rect    Where the whole image goes, stretched to it; in points of the
///                canvas, and beyond it where it is larger.
/// @param scale   Pixels a point, of the result too. The canvas is rounded up to
///                whole pixels.
/// @return Null for a canvas without area or out of reason, and for an image
///         whose bytes do not decode.
std::shared_ptr<UIImage> drawnImage(const UIImage& image, CGSize canvas, const CGRect& rect, double scale);

/// A JPEG of the stored pixels on white, with the orientation as a tag where it
/// is not up, the colour profile and nothing else of the picture's metadata. Blocks.
/// @param quality  0 (smallest) to 1 (best).
/// @return Empty when the image does not decode.
Data UIImageJPEGRepresentation(const UIImage& image, double quality);

/// A PNG of the upright pixels, with alpha and the colour profile. Blocks.
/// @return Empty when the image does not decode.
Data UIImagePNGRepresentation(const UIImage& image);

} // namespace exifcard
