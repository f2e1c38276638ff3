#include "platform/foundation/UserLanguages.h"

#include <algorithm>
#include <cstdlib>

namespace exifcard {
namespace {

/// A language becomes part of a path, so whatever is longer or stranger than a name is none.
constexpr std::size_t kLongestName = 32;
constexpr std::string_view kNameCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_@-";

std::string environmentValue(const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing sets the environment while threads run.
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isUntranslated(std::string_view name) {
    return name == "C" || name == "POSIX";
}

/// "de_DE.UTF-8@euro" is "de_DE@euro".
std::string withoutCodeset(std::string_view name) {
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) {
        return std::string(name);
    }
    const auto modifier = std::min(name.find('@', dot), name.size());
    return std::string(name.substr(0, dot)).append(name.substr(modifier));
}

/// "sr_RS@latin", "sr@latin", "sr_RS", "sr": from the closest to the widest.
void appendVariants(std::vector<std::string>& languages, const std::string& name) {
    const std::string plain = name.substr(0, name.find('@'));
    const std::string modifier = name.substr(plain.size());
    const std::string language = plain.substr(0, plain.find('_'));
    for (auto variant : {plain + modifier, language + modifier, plain, language}) {
        if (std::ranges::find(languages, variant) == languages.end()) {
            languages.push_back(std::move(variant));
        }
    }
}

std::string languageList() {
    auto locale = userLocaleName();
    auto list = environmentValue("LANGUAGE");
    return list.empty() || isUntranslated(locale) ? std::move(locale) : std::move(list);
}

} // namespace

std::string userLocaleName() {
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (auto name = environmentValue(variable); !name.empty()) {
            return name;
        }
    }
    return {};
}

std::vector<std::string> userLanguages() {
    std::vector<std::string> languages;
    const std::string list = languageList();
    for (std::string_view rest = list; !rest.empty();) {
        const auto length = std::min(rest.find(':'), rest.size());
        const std::string name = withoutCodeset(rest.substr(0, length));
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (isUntranslated(name) || name == "en" || name.starts_with("en_")) {
            break;
        }
        if (!name.empty() && name.size() <= kLongestName &&
            name.find_first_not_of(kNameCharacters) == std::string::npos) {
            appendVariants(languages, name);
        }
    }
    return languages;
}

} // namespace exifcard
