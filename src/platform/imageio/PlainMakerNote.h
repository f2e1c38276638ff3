#pragma once

#include "platform/imageio/MakerNote.h"
#include "platform/imageio/NoteDecoder.h"

namespace exifcard {

/// The wanted tags of a note that is a plain directory: Canon's, Fujifilm's and Panasonic's. Exiv2, which
/// takes longer to load than to decode them, is not asked.
/// @return Nothing for the note of another maker.
std::optional<std::vector<NoteTag>> tagsOfPlainMakerNote(
    const MakerNote& note, std::span<const WantedTag> wanted);

} // namespace exifcard
