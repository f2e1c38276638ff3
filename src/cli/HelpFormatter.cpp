#include "cli/HelpFormatter.h"

#include "cli/Choices.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

namespace exifcard {
namespace {

constexpr std::size_t kOptionColumnWidth = 28;

const CLI::App* rootOf(const CLI::App* app) {
    return app->get_parent() == nullptr ? app : rootOf(app->get_parent());
}

} // namespace

HelpFormatter::HelpFormatter() {
    column_width(kOptionColumnWidth);
    label("Positionals", "Arguments");
}

std::string HelpFormatter::make_usage(const CLI::App* app, std::string name) const {
    std::string usage = "Usage: " + name;
    if (!app->get_subcommands({}).empty()) {
        return usage + " COMMAND [OPTION]... [ARGUMENT]...\n";
    }
    usage += " [OPTION]...";
    for (const CLI::Option* option :
        app->get_options([](const CLI::Option* o) { return o->get_positional(); })) {
        usage += " " + make_option_usage(option);
    }
    return usage + "\n";
}

std::string HelpFormatter::make_option_name(const CLI::Option* option, bool isPositional) const {
    return isPositional ? option->get_name(true, false)
                        : fmt::format("{}", fmt::join(dashedNames(*option), ", "));
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    const bool isFlag = option->get_expected_min() == 0 && option->get_type_size_max() == 1;
    if (option->get_type_name().empty() || option->get_positional()) {
        return "";
    }
    return isFlag ? fmt::format("[={}]", option->get_type_name())
                  : fmt::format("={}", option->get_type_name());
}

std::string HelpFormatter::make_footer(const CLI::App* app) const {
    const CLI::App* const root = rootOf(app);
    std::string footer;
    if (app != root) {
        const auto isShared = [root](const CLI::Option* option) {
            return option->nonpositional() && option != root->get_help_ptr();
        };
        // The help has put an empty line already.
        footer = make_group("Options of every command", false, root->get_options(isShared)).substr(1) + "\n";
    }
    return footer + "Examples:\n" + app->get_footer() + "\n";
}

} // namespace exifcard
