#pragma once

#include <functional>
#include <span>

namespace exifcard {

class CommandOptions;

class Session;

/// What the shell is told.
enum class ExitStatus {
    Done = 0,
    SomethingFailed = 1, ///< The rest was done.
    WrongUsage = 2,      ///< Nothing was done.
};

/// What a command does once its options are parsed.
using CommandAction = std::function<ExitStatus(Session&)>;

/// One command: an entry of the table that command line, help, completion and man pages are made from.
struct Command {
    const char* name;
    const char* summary;  ///< One line, without a full stop.
    const char* examples; ///< Lines that a user can type, each after a line that tells what it does.
    /// Declares the command's options and answers what runs it; null where only its subcommands run.
    CommandAction (*declare)(CommandOptions& command) = nullptr;
    std::span<const Command> subcommands = {};
    bool walksAllCommands = false; ///< Needs the options of all commands, not of its own alone.
};

/// Every command, in the order of the help.
std::span<const Command* const> allCommands();

} // namespace exifcard
