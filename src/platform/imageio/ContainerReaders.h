#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/ImageFacts.h"

#include <cstddef>
#include <optional>

namespace exifcard {

// One reader for each kind of file. The bytes are untrusted and need not be of
// that kind; a reader answers nothing when there is no such image in them, and
// touches only the pages that hold what it looks for.

std::optional<ImageFacts> readJpeg(const Data& file, std::size_t index);

} // namespace exifcard
