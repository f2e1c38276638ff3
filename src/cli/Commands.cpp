#include "cli/Commands.h"

namespace exifcard {

std::span<const Command* const> allCommands() {
    static constexpr const Command* kCommands[] = {
        &kCompletionCommand,
    };
    return kCommands;
}

} // namespace exifcard
