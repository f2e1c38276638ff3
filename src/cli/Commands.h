#pragma once

#include "cli/Command.h"

namespace exifcard {

extern const Command kCompletionCommand;
extern const Command kConversationCommand;
extern const Command kConversationsCommand;
extern const Command kPropertiesCommand;

} // namespace exifcard
