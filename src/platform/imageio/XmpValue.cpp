#include "platform/imageio/XmpValue.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace exifcard {
namespace {

std::optional<double> realFromText(std::string_view text) {
    if (text.find_first_of("0123456789") == std::string_view::npos) {
        return std::nullopt;
    }
    const auto bar = text.find('/');
    if (bar == std::string_view::npos) {
        return doubleFromText(text);
    }
    const double denominator = doubleFromText(text.substr(bar + 1));
    return denominator == 0 ? std::nullopt : std::optional(doubleFromText(text.substr(0, bar)) / denominator);
}

Value realValue(std::string_view text) {
    const auto number = realFromText(text);
    return number ? Value(*number) : Value();
}

Value integerValue(std::string_view text) {
    const auto number = realFromText(text);
    return number ? Value(saturatingInteger(*number)) : Value();
}

Value textValue(std::string_view text) {
    return text.empty() ? Value() : Value(text);
}

/// An array of what `convert` makes of each text; nothing as soon as it makes nothing of one.
template<typename Texts>
Value listOf(const Texts& texts, Value (*convert)(std::string_view)) {
    auto list = Array::make();
    for (const auto& text : texts) {
        auto value = convert(text);
        if (value.isNothing()) {
            return {};
        }
        list->addObject(std::move(value));
    }
    return list;
}

/// The texts between separators, empty ones left out.
std::vector<std::string_view> partsOf(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const auto length = std::min(text.find(separator), text.size());
        if (length > 0) {
            parts.push_back(text.substr(0, length));
        }
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return parts;
}

/// Where a text such as "2020-01-02T03:04:05" follows the pattern, "d" for a digit.
bool follows(std::string_view text, std::string_view pattern) {
    return text.size() >= pattern.size() &&
           std::equal(pattern.begin(), pattern.end(), text.begin(), [](char wanted, char given) {
               return wanted == 'd' ? given >= '0' && given <= '9' : wanted == given;
           });
}

std::string dateText(std::string_view text) {
    if (!follows(text, "dddd-dd-dd")) {
        return {};
    }
    std::string date(text.substr(0, 10));
    std::ranges::replace(date, '-', ':');
    return date;
}

std::string timeText(std::string_view text) {
    const auto time = text.substr(std::min(text.find('T'), text.size() - 1) + 1);
    if (follows(time, "dd:dd:dd")) {
        return std::string(time.substr(0, 8));
    }
    return follows(time, "dd:dd") ? std::string(time.substr(0, 5)) + ":00" : std::string();
}

} // namespace

Value integerFromXmp(const XmpProperty& property) {
    return property.values.size() == 1 ? integerValue(property.values.front()) : integersFromXmp(property);
}

Value realFromXmp(const XmpProperty& property) {
    return property.values.size() == 1 ? realValue(property.values.front()) : realsFromXmp(property);
}

Value textFromXmp(const XmpProperty& property) {
    return textValue(property.values.front());
}

Value integersFromXmp(const XmpProperty& property) {
    return listOf(property.values, integerValue);
}

Value dottedIntegersFromXmp(const XmpProperty& property) {
    return listOf(partsOf(property.values.front(), '.'), integerValue);
}

Value realsFromXmp(const XmpProperty& property) {
    return listOf(property.values, realValue);
}

Value spacedRealsFromXmp(const XmpProperty& property) {
    if (property.values.size() > 1) {
        return realsFromXmp(property);
    }
    return listOf(partsOf(property.values.front(), ' '), realValue);
}

Value textsFromXmp(const XmpProperty& property) {
    return listOf(property.values, [](std::string_view text) { return Value(text); });
}

Value versionFromXmp(const XmpProperty& property) {
    return versionFromDigits(property.values.front());
}

Value dateTimeFromXmp(const XmpProperty& property) {
    const std::string& text = property.values.front();
    const auto date = dateText(text);
    const auto time = timeText(text);
    return date.empty() || time.empty() ? Value() : Value(date + " " + time);
}

Value dateFromXmp(const XmpProperty& property) {
    return textValue(dateText(property.values.front()));
}

Value timeOfDayFromXmp(const XmpProperty& property) {
    return textValue(timeText(property.values.front()));
}

Value angleFromXmp(const XmpProperty& property) {
    std::string_view rest = property.values.front();
    if (rest.empty() || rest.front() < '0' || rest.front() > '9') {
        return {};
    }
    double degrees = 0;
    for (double unit = 1; unit <= 3600 && !rest.empty(); unit *= 60) {
        degrees += doubleFromText(rest) / unit;
        rest.remove_prefix(std::min(rest.find(','), rest.size() - 1) + 1);
    }
    return degrees;
}

Value angleReferenceFromXmp(const XmpProperty& property) {
    const std::string& text = property.values.front();
    const bool hasLetter =
        !text.empty() && std::string_view("NSEW").find(text.back()) != std::string_view::npos;
    return hasLetter ? Value(text.substr(text.size() - 1)) : Value();
}

Value numberOrTextFromXmp(const XmpProperty& property) {
    const std::string& text = property.values.front();
    const bool isNumber = text.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? integerValue(text) : textValue(text);
}

Value nothingFromXmp(const XmpProperty& /*property*/) {
    return {};
}

} // namespace exifcard
