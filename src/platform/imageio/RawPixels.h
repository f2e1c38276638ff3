#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/PixelCoder.h"
#include "platform/imageio/RawDeveloper.h"
#include "platform/uivalues/UIImage.h"

#include <memory>
#include <optional>
#include <string_view>

namespace exifcard {

/// Whether a type identifier is one of cameras' raw files: "com.nikon.raw-image".
bool isRawType(std::string_view type);

/// What the file's own structure tells of the picture to develop. Loads the module on first need; decodes no
/// pixel.
std::optional<RawFacts> rawFacts(const Data& file);

/// The stored pixels of a raw file, made anew each time they are asked for: from the smallest preview in the
/// file that is large enough and has the picture's shape, else developed. What cannot be developed gives its
/// largest preview.
/// @param stored  The picture's size before its turn.
std::shared_ptr<const PixelSource> rawPixels(const Data& file, PixelSize stored);

} // namespace exifcard
