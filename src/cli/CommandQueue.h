#pragma once

#include "cli/Command.h"

#include <functional>

namespace exifcard {

/// Runs `work` on a queue while the calling thread, which is the main one, drains the main queue. For
/// commands whose work lands on the main queue; the others need no queue.
ExitStatus runOnQueue(const std::function<ExitStatus()>& work);

} // namespace exifcard
