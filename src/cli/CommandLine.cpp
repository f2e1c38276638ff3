#include "cli/CommandLine.h"

#include "cli/CommandOptions.h"
#include "cli/GlobalOptions.h"
#include "cli/HelpFormatter.h"
#include "cli/Session.h"
#include "metadata/FieldKeys.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "settings/FieldList.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {
namespace {

constexpr const char* kSummary =
    "Reads the metadata of photos, and sends photos with a caption of their settings";
constexpr const char* kExamples = R"(What a photo tells:
  exifcard rows photo.jpg
The share texts of all photos below a folder:
  find Pictures -name '*.jpg' -print0 | exifcard share -0
A photo into a conversation, with its caption:
  exifcard send photo.jpg --to Ann)";

void addCommand(CLI::App& parent, const Command& command, CommandTree& tree);

/// Gives the command its options and subcommands.
void fillCommand(CLI::App& app, const Command& command, CommandTree& tree) {
    if (command.declare != nullptr) {
        CommandOptions options(app);
        tree.actions.emplace_back(&app, command.declare(options));
    } else {
        app.require_subcommand(1);
    }
    for (const Command& subcommand : command.subcommands) {
        addCommand(app, subcommand, tree);
    }
    for (std::size_t next = 0; command.walksAllCommands && next < tree.fillings.size(); ++next) {
        const auto fill = tree.fillings[next]; // A copy: filling one may add others.
        fill();
    }
}

/// Adds the command by name and summary. The rest comes when the arguments name it: declaring every option of
/// every command takes as long as reading a photo.
void addCommand(CLI::App& parent, const Command& command, CommandTree& tree) {
    CLI::App* const app = parent.add_subcommand(command.name, command.summary);
    app->group("Commands");
    app->footer(command.examples);
    auto fill = [app, &command, &tree, isFilled = std::make_shared<bool>(false)] {
        if (!std::exchange(*isFilled, true)) {
            fillCommand(*app, command, tree);
        }
    };
    app->preparse_callback([fill](std::size_t) { fill(); });
    tree.fillings.push_back(std::move(fill));
}

/// Declares the commands that the arguments name: a command costs as much as forty rows. All of them, where
/// help is wanted, none is named or one looks at the others.
void addCommandsNamedBy(std::span<char* const> arguments, CommandTree& tree) {
    const auto names = [arguments](std::string_view word) {
        return std::ranges::any_of(arguments, [word](const char* argument) { return argument == word; });
    };
    std::vector<const Command*> named;
    std::ranges::copy_if(allCommands(), std::back_inserter(named),
        [&names](const auto* command) { return names(command->name); });
    const bool areAllWanted = named.empty() || names("-h") || names("--help") ||
                              std::ranges::any_of(named, &Command::walksAllCommands);
    for (const Command* command : areAllWanted ? allCommands() : std::span<const Command* const>(named)) {
        addCommand(*tree.root, *command, tree);
    }
}

/// The command that was named, down to its last subcommand.
const CLI::App* chosenCommand(const CLI::App* app) {
    while (!app->get_subcommands().empty()) {
        app = app->get_subcommands().front();
    }
    return app;
}

/// "exifcard settings get", for messages.
std::string fullName(const CLI::App* app) {
    return app->get_parent() == nullptr ? app->get_name()
                                        : fullName(app->get_parent()) + " " + app->get_name();
}

ExitStatus answerParseError(const CLI::App& root, const CLI::ParseError& error, Session& session) {
    const CLI::App* const command = chosenCommand(&root);
    if (dynamic_cast<const CLI::CallForHelp*>(&error) != nullptr) {
        session.print(command->help(command == &root ? "" : fullName(command->get_parent())));
        return session.status();
    }
    if (dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr) {
        session.print(std::string(error.what()) + "\n");
        return session.status();
    }
    std::string fault = error.what();
    if (!command->get_subcommands({}).empty()) {
        const auto unknown = command->remaining();
        fault = unknown.empty() ? "a command is missing" : "there is no " + unknown.front();
    }
    return session.refuse(fmt::format("{}; see {} --help", fault, fullName(command)));
}

} // namespace

CommandTree::CommandTree() : root(std::make_unique<CLI::App>(kSummary, "exifcard")) {
}

CommandTree::~CommandTree() = default;

ExitStatus runCommandLine(int argumentCount, char** arguments) {
    CommandTree tree;
    CLI::App& root = *tree.root;
    root.formatter(std::make_shared<HelpFormatter>());
    root.set_help_flag("-h,--help", "Print this help");
    root.set_version_flag("--version", "exifcard " EXIFCARD_VERSION, "Print the version");
    root.footer(kExamples);
    root.require_subcommand(1);
    root.fallthrough();
    CommandOptions rootOptions(root);
    const auto globalOptions = declareGlobalOptions(rootOptions);
    addCommandsNamedBy({arguments, static_cast<std::size_t>(argumentCount)}, tree);
    try {
        root.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        Session session{SessionOptions{}};
        return answerParseError(root, error, session);
    }
    setFieldTest(isFieldKey); // What a settings file names is no reason to end.
    Session session(applyGlobalOptions(*globalOptions));
    PHPhotoLibrary::grantForThisProcess(); // Who types a command on the own files has decided.
    const CLI::App* const chosen = chosenCommand(&root);
    for (const auto& [app, action] : tree.actions) {
        if (app == chosen) {
            return action(session);
        }
    }
    return session.refuse("nothing to do; see exifcard --help");
}

} // namespace exifcard
