#pragma once

#include "platform/imageio/NoteDecoder.h"

namespace exifcard {

/// Loaded when it is first asked for. Null when it is missing.
const NoteDecoder* noteDecoder();

/// Tells in a debug line what a decoder left out.
void logNoteFault(const char* reason);

} // namespace exifcard
