#pragma once

#include "cli/Command.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace exifcard {

/// The command tree as it is parsed: each command of the table with its options.
struct CommandTree {
    std::unique_ptr<CLI::App> root;
    /// What runs a command; commands of which only subcommands run have none.
    std::vector<std::pair<const CLI::App*, CommandAction>> actions;
    /// What gives each command its options, once; a command that is named is filled by itself.
    std::vector<std::function<void()>> fillings;

    CommandTree();
    ~CommandTree();
};

/// Parses the arguments and runs the command that they name.
ExitStatus runCommandLine(int argumentCount, char** arguments);

} // namespace exifcard
