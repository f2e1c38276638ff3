#include "settings/SettingsTable.h"

#include "platform/foundation/ASCII.h"
#include "platform/foundation/Locale.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <iterator>
#include <string>

namespace exifcard {
namespace {

struct BooleanWord {
    std::string_view word;
    bool value;
};

constexpr BooleanWord kBooleanWords[] = {
    {"true", true},
    {"yes", true},
    {"on", true},
    {"1", true},
    {"false", false},
    {"no", false},
    {"off", false},
    {"0", false},
};

std::optional<Value> booleanFromText(std::string_view text) {
    const std::string lowered = lowerCaseASCII(text);
    const auto* const found = std::ranges::find(kBooleanWords, lowered, &BooleanWord::word);
    return found != std::end(kBooleanWords) ? std::optional<Value>(found->value) : std::nullopt;
}

std::optional<Value> integerFromWholeText(std::string_view text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    const bool isWhole = parsed.ec == std::errc() && parsed.ptr == end;
    return isWhole ? std::optional<Value>(number) : std::nullopt;
}

} // namespace

const Setting* settingForKey(std::string_view key) {
    const auto* const found = std::ranges::find(kSettings, key, &Setting::key);
    return found != std::end(kSettings) ? found : nullptr;
}

Value defaultValue(const Setting& setting) {
    switch (setting.rule) {
    case SettingRule::LocalizedText:
        return localizedString(setting.defaultText);
    case SettingRule::LocaleMetric:
        return Locale::current().usesMetricSystem();
    default:
        break;
    }
    switch (setting.kind) {
    case SettingKind::Boolean:
        return setting.defaultNumber != 0;
    case SettingKind::Text:
        return setting.defaultText;
    default:
        return setting.defaultNumber;
    }
}

std::optional<Value> settingValueFromText(const Setting& setting, std::string_view text) {
    switch (setting.kind) {
    case SettingKind::Boolean:
        return booleanFromText(text);
    case SettingKind::Text:
        return Value(text);
    case SettingKind::Integer:
        return integerFromWholeText(text);
    case SettingKind::UnsignedInteger:
        return text.starts_with('-') ? std::nullopt : integerFromWholeText(text);
    }
    return std::nullopt;
}

} // namespace exifcard
