#pragma once

#include "platform/foundation/Data.h"
#include "platform/uivalues/UIImage.h"

#include <memory>
#include <string>

namespace exifcard {

/// The stored pixels of a picture file, decoded anew each time they are asked for: a decoded picture takes
/// some ten times the memory of its file.
/// @param type  What the bytes are, such as "public.heic".
std::shared_ptr<const PixelSource> encodedPixels(const Data& file, std::string type);

} // namespace exifcard
