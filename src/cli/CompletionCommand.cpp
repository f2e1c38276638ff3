#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/CompletionScript.h"
#include "cli/Session.h"

#include <memory>
#include <string>

namespace exifcard {
namespace {

CommandAction declareCompletion(CommandOptions& command) {
    auto shell = std::make_shared<std::string>();
    command.value("SHELL", *shell, "The shell that the script is for: bash, zsh or fish")
        .required()
        .limitedTo({"bash", "zsh", "fish"});
    return [shell, commandLine = &command.commandLine()](Session& session) {
        session.print(completionScript(*shell, *commandLine));
        return session.status();
    };
}

} // namespace

const Command kCompletionCommand = {
    .name = "completion",
    .summary = "Print a script that completes commands, options and files in a shell",
    .examples = R"(In this shell:
  source <(exifcard completion bash)
In every new one:
  exifcard completion fish > ~/.config/fish/completions/exifcard.fish)",
    .declare = declareCompletion,
    .walksAllCommands = true,
};

} // namespace exifcard
