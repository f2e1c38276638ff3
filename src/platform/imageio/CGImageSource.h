#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/URL.h"

#include <cstddef>
#include <memory>
#include <string>

namespace exifcard {

/// An image file or its bytes, from which properties are read without decoding a pixel.
class CGImageSource;
using CGImageSourcePtr = std::shared_ptr<const CGImageSource>;

/// Never null: any bytes make a source, even none.
CGImageSourcePtr CGImageSourceCreateWithData(const Data& data);
/// Null when the file cannot be opened or is no regular file.
CGImageSourcePtr CGImageSourceCreateWithURL(const URL& url);

/// The number of images: pages of a TIFF, frames of a GIF, 1 for a JPEG or PNG, 0 for what is no image.
std::size_t CGImageSourceGetCount(const CGImageSource& source);
/// The type identifier of the content ("public.jpeg"), whatever the name; empty for what is no image.
const std::string& CGImageSourceGetType(const CGImageSource& source);
/// The bytes that the source was made of.
const Data& CGImageSourceGetData(const CGImageSource& source);

/// The image properties dictionary of one image, made anew at each call: top
/// level entries ("PixelWidth", "Orientation") and sub-dictionaries ("{Exif}",
/// "{TIFF}", "{GPS}", "{IPTC}", "{ExifAux}", …).
/// @return Null for what is no image or is broken beyond reading; one log line tells why.
DictionaryPtr CGImageSourceCopyPropertiesAtIndex(const CGImageSource& source, std::size_t index);

/// The XMP packet of one image as it stands in the file; empty without one. No call of the platform's: what
/// a packet tells beyond the properties dictionary is for the library alone.
Data CGImageSourceCopyXmpPacketAtIndex(const CGImageSource& source, std::size_t index);

} // namespace exifcard
