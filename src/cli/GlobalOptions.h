#pragma once

#include "cli/Session.h"

#include <memory>
#include <optional>
#include <string>

namespace exifcard {

class CommandOptions;

/// The options that every command takes, as typed.
struct GlobalOptions {
    bool isJSON = false;
    bool isQuiet = false;
    std::string color = "auto";
    std::string log;
    std::string screen;
    unsigned jobs = 0; ///< 0: one for each core.
};

/// Declares them; they may stand before or after the command's name.
std::shared_ptr<GlobalOptions> declareGlobalOptions(CommandOptions& command);

/// Puts log and screen into force.
/// @return What the command needs to know.
SessionOptions applyGlobalOptions(const GlobalOptions& options);

} // namespace exifcard
