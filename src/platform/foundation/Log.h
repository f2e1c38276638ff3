#pragma once

#include "platform/foundation/FormatString.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace exifcard {

/// Where log lines go. Nothing is formatted for a line that goes nowhere.
enum class LogTarget { Nowhere, StandardError, System };

/// Sets where debug lines go; at the start they go nowhere.
void setDebugLogTarget(LogTarget target);
bool isDebugLogWanted();

/// Writes one debug line; ask `isDebugLogWanted` first where the line costs something to make.
void debugLog(std::string_view line);
/// The same of a platform format, filled only when the line goes somewhere.
void debugLog(std::string_view format, std::initializer_list<FormatArgument> arguments);
/// One line about something that went wrong: to standard error while the
/// program has no other place for it.
void errorLog(std::string_view line);

/// Hands every debug and error line to `capture` instead, until it is replaced
/// by an empty one; for tests.
void captureLog(std::function<void(std::string_view line)> capture);

} // namespace exifcard
