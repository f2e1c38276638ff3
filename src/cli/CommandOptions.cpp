#include "cli/CommandOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <utility>

namespace exifcard {

CommandOption CommandOption::required() {
    _option->required();
    return *this;
}

CommandOption CommandOption::named(const std::string& placeholder) {
    _option->type_name(placeholder);
    return *this;
}

CommandOption CommandOption::limitedTo(const std::vector<std::string>& choices) {
    // The validator's own description would stand behind the choices once more.
    _option->type_name(fmt::format("{}", fmt::join(choices, "|")));
    _option->check(CLI::IsMember(choices).description(""));
    return *this;
}

CommandOption CommandOption::between(std::size_t least, std::size_t most) {
    _option->check(CLI::Range(least, most).description(""));
    return *this;
}

CommandOption CommandOption::checkedBy(std::function<std::string(const std::string& value)> fault) {
    _option->check(CLI::Validator(std::move(fault), ""));
    return *this;
}

CommandOption CommandOption::excluding(const CommandOption& other) {
    _option->excludes(other._option);
    return *this;
}

CommandOption CommandOptions::flag(const std::string& names, bool& value, const std::string& help) {
    return CommandOption(*_app->add_flag(names, value, help));
}

CommandOption CommandOptions::flag(const std::string& names, std::string& value, const std::string& help) {
    return CommandOption(*_app->add_flag(names, value, help));
}

CommandOption CommandOptions::value(const std::string& names, std::string& value, const std::string& help) {
    return CommandOption(*_app->add_option(names, value, help));
}

CommandOption CommandOptions::value(const std::string& names, unsigned& value, const std::string& help) {
    return CommandOption(*_app->add_option(names, value, help));
}

CommandOption CommandOptions::value(const std::string& names, std::size_t& value, const std::string& help) {
    return CommandOption(*_app->add_option(names, value, help));
}

CommandOption CommandOptions::value(
    const std::string& names, std::vector<std::string>& values, const std::string& help) {
    return CommandOption(*_app->add_option(names, values, help));
}

const CLI::App& CommandOptions::commandLine() const {
    const CLI::App* root = _app;
    while (root->get_parent() != nullptr) {
        root = root->get_parent();
    }
    return *root;
}

} // namespace exifcard
