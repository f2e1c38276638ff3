#pragma once

#include "cli/Command.h"

namespace exifcard {

extern const Command kCompletionCommand;

} // namespace exifcard
