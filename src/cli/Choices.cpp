#include "cli/Choices.h"

#include <CLI/CLI.hpp>

#include <string_view>

namespace exifcard {
namespace {

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(separator), text.size());
        if (length > 0) {
            parts.emplace_back(text.substr(0, length));
        }
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return parts;
}

} // namespace

std::vector<std::string> choicesOf(const CLI::Option& option) {
    const std::string names = option.get_type_name();
    return names.find('|') == std::string::npos ? std::vector<std::string>{} : split(names, '|');
}

std::vector<std::string> dashedNames(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

std::vector<std::string> splitAtCommas(const std::string& text) {
    return split(text, ',');
}

} // namespace exifcard
