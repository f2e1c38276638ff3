#include "platform/imageio/NotesModule.h"

#include "platform/foundation/LoadableModule.h"
#include "platform/foundation/Log.h"

#include <fmt/format.h>

namespace exifcard {

const NoteDecoder* noteDecoder() {
    static const auto* const decoder = moduleService<NoteDecoderEntry>("notes", kNoteDecoderEntry);
    return decoder;
}

void logNoteFault(const char* reason) {
    if (isDebugLogWanted()) {
        debugLog(fmt::format("ImageIO: metadata left out: {}", reason));
    }
}

} // namespace exifcard
