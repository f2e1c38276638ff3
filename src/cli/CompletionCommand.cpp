#include "cli/Choices.h"
#include "cli/Commands.h"
#include "cli/CompletionScript.h"
#include "cli/Session.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace exifcard {
namespace {

CommandAction declareCompletion(CLI::App& app) {
    auto shell = std::make_shared<std::string>();
    limitToChoices(
        *app.add_option("SHELL", *shell, "The shell that the script is for: bash, zsh or fish")->required(),
        {"bash", "zsh", "fish"});
    return [shell, root = app.get_parent()](Session& session) {
        session.print(completionScript(*shell, *root));
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
