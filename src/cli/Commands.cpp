#include "cli/Commands.h"

namespace exifcard {

std::span<const Command* const> allCommands() {
    static constexpr const Command* kCommands[] = {
        &kPropertiesCommand,
        &kConversationCommand,
        &kConversationsCommand,
        &kCompletionCommand,
    };
    return kCommands;
}

} // namespace exifcard
