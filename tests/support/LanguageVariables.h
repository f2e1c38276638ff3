#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace exifcard {

/// The language variables as given, the others unset, until the object ends.
class LanguageVariables {
public:
    using Settings = std::map<std::string, std::string>;

    explicit LanguageVariables(const Settings& settings) {
        for (const char* const name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
            const char* const before = getenv(name);
            _before[name] = before != nullptr ? std::optional<std::string>(before) : std::nullopt;
            unsetenv(name);
        }
        for (const auto& [name, value] : settings) {
            setenv(name.c_str(), value.c_str(), 1);
        }
    }
    ~LanguageVariables() {
        for (const auto& [name, value] : _before) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }
    LanguageVariables(const LanguageVariables&) = delete;
    LanguageVariables& operator=(const LanguageVariables&) = delete;

private:
    std::map<std::string, std::optional<std::string>> _before;
};

} // namespace exifcard
