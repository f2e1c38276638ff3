#pragma once

#include "platform/foundation/Data.h"
#include "platform/photos/import/MediaFacts.h"

namespace exifcard {

/// Adds what a sidecar file tells about the picture beside it: date, place, title and rating, each where the
/// picture's own file tells none.
/// @param sidecar  An XMP file; untrusted.
void addSidecar(MediaFacts& facts, const Data& sidecar);

} // namespace exifcard
