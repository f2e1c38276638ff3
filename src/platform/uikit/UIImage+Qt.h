#pragma once

#include "platform/uivalues/CGGeometry.h"

#include <QImage>

#include <memory>
#include <optional>

namespace exifcard {

class UIImage;
struct Bitmap;

/// The pixels, upright, in their own colours; null for a picture that does not decode. Decodes, so not on the
/// main queue, unless the picture is decoded already. Any thread.
/// @param smallest  See `PixelSource::decode`, but upright.
std::shared_ptr<const Bitmap> uprightBitmap(const UIImage& picture, std::optional<CGSize> smallest);
/// A part of the pixels, within them, in sRGB.
QImage qImageFromBitmap(const Bitmap& bitmap, const QRect& part);
/// The same for a picture that is drawn at once and dropped: the next one of this thread takes its place.
QImage passingQImageFromBitmap(const Bitmap& bitmap, const QRect& part);
/// All of `uprightBitmap` in sRGB; a null image for one that does not decode.
QImage qImageFromUIImage(const UIImage& picture);
/// The other way; null for a null image.
std::shared_ptr<UIImage> imageFromQImage(const QImage& image, double scale = 1);

} // namespace exifcard
