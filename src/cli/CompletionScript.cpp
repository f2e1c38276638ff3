#include "cli/CompletionScript.h"

#include "cli/Choices.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

namespace exifcard {
namespace {

struct CompletedOption {
    std::vector<std::string> names; ///< With their dashes.
    std::string summary;
    bool takesValue = false;
    bool takesFile = false;
    std::vector<std::string> choices;
};

/// What may follow one command.
struct CompletedCommand {
    std::string path; ///< "exifcard settings get"
    std::vector<const CLI::App*> subcommands;
    std::vector<CompletedOption> options = {};
    std::vector<std::string> choices = {}; ///< Of its arguments.
    bool takesFiles = false;
};

void addOptions(const CLI::App& app, CompletedCommand& command) {
    for (const CLI::Option* option :
        app.get_options([](const CLI::Option* o) { return o->nonpositional(); })) {
        const bool isRepeated = option == app.get_help_ptr() && !command.options.empty();
        if (isRepeated) {
            continue; // Every command has its own help.
        }
        command.options.push_back({.names = dashedNames(*option),
            .summary = option->get_description(),
            .takesValue = option->get_expected_min() > 0 && option->get_type_size_max() > 0,
            .takesFile = option->get_type_name() == kFileTypeName,
            .choices = choicesOf(*option)});
    }
}

void addArguments(const CLI::App& app, CompletedCommand& command) {
    for (const CLI::Option* option :
        app.get_options([](const CLI::Option* o) { return o->get_positional(); })) {
        const auto choices = choicesOf(*option);
        command.choices.insert(command.choices.end(), choices.begin(), choices.end());
        command.takesFiles = command.takesFiles || option->get_type_name() == kFileTypeName;
    }
}

/// The one walk over the command tree that all shells' scripts are made from.
void walk(const CLI::App& app, const std::string& path, std::vector<CompletedCommand>& commands) {
    CompletedCommand command{.path = path, .subcommands = app.get_subcommands({})};
    addOptions(app, command);
    for (const CLI::App* above = app.get_parent(); above != nullptr; above = above->get_parent()) {
        if (above->get_parent() == nullptr) {
            addOptions(*above, command); // The options of every command.
        }
    }
    addArguments(app, command);
    commands.push_back(command);
    for (const CLI::App* subcommand : command.subcommands) {
        walk(*subcommand, path + " " + subcommand->get_name(), commands);
    }
}

/// The texts between spaces, for a list of words in a script.
std::string words(const std::vector<std::string>& texts) {
    return fmt::format("{}", fmt::join(texts, " "));
}

/// The text between single quotes; all three shells read "'\''" as a quote.
std::string inQuotes(std::string_view text) {
    std::string result = "'";
    for (const char character : text) {
        if (character == '\'') {
            result += "'\\''";
        } else {
            result += character;
        }
    }
    return result + "'";
}

std::vector<std::string> optionNames(const CompletedCommand& command) {
    std::vector<std::string> names;
    for (const CompletedOption& option : command.options) {
        names.insert(names.end(), option.names.begin(), option.names.end());
    }
    return names;
}

std::vector<std::string> argumentWords(const CompletedCommand& command) {
    std::vector<std::string> names = command.choices;
    for (const CLI::App* subcommand : command.subcommands) {
        names.push_back(subcommand->get_name());
    }
    return names;
}

/// The patterns of a "case" that match the path and a word that goes one command further.
std::string deeperPaths(const std::vector<CompletedCommand>& commands) {
    std::vector<std::string> patterns;
    for (std::size_t index = 1; index < commands.size(); ++index) {
        patterns.push_back(inQuotes(commands[index].path));
    }
    return fmt::format("{}", fmt::join(patterns, "|"));
}

/// What bash and zsh share: sets `words` and `files` from `at` and `previous`.
std::string shellTables(const std::vector<CompletedCommand>& commands) {
    std::string script = "    case \"$at $previous\" in\n";
    for (const CompletedCommand& command : commands) {
        for (const CompletedOption& option : command.options) {
            for (const std::string& name : option.names) {
                if (option.takesValue) {
                    script += fmt::format("    {}) words={}; files={}; value=1 ;;\n",
                        inQuotes(command.path + " " + name), inQuotes(words(option.choices)),
                        option.takesFile ? 1 : 0);
                }
            }
        }
    }
    script += "    esac\n    [ -n \"$value\" ] || case \"$at\" in\n";
    for (const CompletedCommand& command : commands) {
        script += fmt::format("    {}) words={}; options={}; files={} ;;\n", inQuotes(command.path),
            inQuotes(words(argumentWords(command))), inQuotes(words(optionNames(command))),
            command.takesFiles ? 1 : 0);
    }
    return script + "    esac\n    case \"$word\" in -*) [ -n \"$value\" ] || words=\"$options\" ;; esac\n";
}

std::string bashScript(const std::vector<CompletedCommand>& commands) {
    return fmt::format(R"(# bash completion for exifcard
_exifcard() {{
    local word="${{COMP_WORDS[COMP_CWORD]}}" previous="${{COMP_WORDS[COMP_CWORD-1]}}"
    local at=exifcard words='' options='' files=0 value='' index
    # bash cuts "--list=card" into three words.
    if [ "$word" = = ]; then word=''; elif [ "$previous" = = ]; then previous="${{COMP_WORDS[COMP_CWORD-2]}}"; fi
    for ((index = 1; index < COMP_CWORD; index++)); do
        case "$at ${{COMP_WORDS[index]}}" in {}) at+=" ${{COMP_WORDS[index]}}" ;; esac
    done
{}    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    [ "$files" = 0 ] || compopt -o default
}}
complete -F _exifcard exifcard
)",
        deeperPaths(commands), shellTables(commands));
}

std::string zshScript(const std::vector<CompletedCommand>& commands) {
    return fmt::format(R"(#compdef exifcard
_exifcard() {{
    local word="$PREFIX" previous="${{words[CURRENT-1]}}"
    local -a typed=("${{(@)words[2,CURRENT-1]}}")
    local at=exifcard words='' options='' files=0 value='' step
    if [[ "$word" = --*=* ]]; then previous="${{word%%=*}}"; compset -P '*='; fi
    for step in "${{typed[@]}}"; do
        case "$at $step" in {}) at+=" $step" ;; esac
    done
{}    compadd -- ${{=words}}
    [ "$files" = 0 ] || _files
}}
if [ "$funcstack[1]" = _exifcard ]; then _exifcard "$@"; else compdef _exifcard exifcard; fi
)",
        deeperPaths(commands), shellTables(commands));
}

std::string fishOption(const CompletedCommand& command, const CompletedOption& option) {
    std::string line = fmt::format("complete -c exifcard -n '__exifcard_at {}'", command.path);
    for (const std::string& name : option.names) {
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (option.takesValue) {
        line += option.takesFile ? " -r" : " -x -a " + inQuotes(words(option.choices));
    }
    return line + " -d " + inQuotes(option.summary) + "\n";
}

std::string fishCommand(const CompletedCommand& command) {
    const std::string start = fmt::format("complete -c exifcard -n '__exifcard_at {}'", command.path);
    std::string script;
    for (const CLI::App* subcommand : command.subcommands) {
        script += fmt::format(
            "{} -f -a {} -d {}\n", start, subcommand->get_name(), inQuotes(subcommand->get_description()));
    }
    if (!command.choices.empty()) {
        script += fmt::format("{} -f -a {}\n", start, inQuotes(words(command.choices)));
    }
    if (command.takesFiles) {
        script += start + " -F\n";
    }
    for (const CompletedOption& option : command.options) {
        script += fishOption(command, option);
    }
    return script;
}

std::string fishScript(const std::vector<CompletedCommand>& commands) {
    std::string script = R"(# fish completion for exifcard
function __exifcard_at
    set -l at exifcard
    for step in (commandline -opc)
        switch "$at $step"
)";
    for (std::size_t index = 1; index < commands.size(); ++index) {
        script += fmt::format(
            "            case {}\n                set at \"$at $step\"\n", inQuotes(commands[index].path));
    }
    script += "        end\n    end\n    test \"$at\" = \"$argv\"\nend\ncomplete -c exifcard -f\n";
    for (const CompletedCommand& command : commands) {
        script += fishCommand(command);
    }
    return script;
}

} // namespace

std::string completionScript(std::string_view shell, const CLI::App& root) {
    std::vector<CompletedCommand> commands;
    walk(root, root.get_name(), commands);
    if (shell == "bash") {
        return bashScript(commands);
    }
    return shell == "zsh" ? zshScript(commands) : fishScript(commands);
}

} // namespace exifcard
