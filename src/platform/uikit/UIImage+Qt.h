#pragma once

#include "platform/uivalues/CGGeometry.h"

#include <QImage>

#include <memory>
#include <optional>

namespace exifcard {

class UIImage;

/// The pixels, upright, in sRGB; a null image for a null picture or one that does not decode. Decodes, so
/// not on the main queue, unless the picture is decoded already. Any thread.
/// @param smallest  See `PixelSource::decode`, but upright.
QImage qImageFromUIImage(const UIImage& picture, std::optional<CGSize> smallest = std::nullopt);
/// The other way; null for a null image.
std::shared_ptr<UIImage> imageFromQImage(const QImage& image, double scale = 1);

} // namespace exifcard
