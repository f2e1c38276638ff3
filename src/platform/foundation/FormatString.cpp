#include "platform/foundation/FormatString.h"

#include "platform/foundation/FormatConversion.h"
#include "platform/foundation/FormatField.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace exifcard {
namespace {

using Takes = FormatConversion::Takes;

/// Text, "%…", text, "%…": hands each to its own function in their order.
template<typename OnText, typename OnConversion>
void readFormat(std::string_view format, const OnText& onText, const OnConversion& onConversion) {
    while (!format.empty()) {
        const auto percent = std::min(format.find('%'), format.size());
        if (percent > 0) {
            onText(format.substr(0, percent));
            format.remove_prefix(percent);
        }
        if (!format.empty()) {
            onConversion(FormatConversion::takeFrom(format));
        }
    }
}

Takes takesKind(FormatArgument::Kind kind) {
    switch (kind) {
    case FormatArgument::Kind::Integer:
        return Takes::Integer;
    case FormatArgument::Kind::Real:
        return Takes::Real;
    default:
        return Takes::Object;
    }
}

/// Only for an argument of the kind that the conversion takes.
void appendArgument(std::string& text, const FormatConversion& conversion, const FormatArgument& argument) {
    switch (argument.kind()) {
    case FormatArgument::Kind::Integer:
        appendInteger(text, conversion, argument.integer());
        return;
    case FormatArgument::Kind::Real:
        appendReal(text, conversion, argument.real());
        return;
    case FormatArgument::Kind::Text:
        appendObject(text, conversion, argument.text());
        return;
    case FormatArgument::Kind::Object:
        appendObject(text, conversion, argument.object().description());
        return;
    }
}

/// The argument that fills the conversion, or null when it is missing or of another kind. `next` is the index
/// for a conversion without a position.
const FormatArgument* argumentOf(
    const FormatConversion& conversion, std::initializer_list<FormatArgument> arguments, std::size_t& next) {
    if (conversion.takes == Takes::Nothing) {
        return nullptr;
    }
    const std::size_t index = conversion.position > 0 ? conversion.position - 1 : next++;
    const bool fits =
        index < arguments.size() && takesKind(arguments.begin()[index].kind()) == conversion.takes;
    return fits ? arguments.begin() + index : nullptr;
}

/// What the format takes at each position, or nothing for one that cannot be filled.
std::optional<std::vector<Takes>> takenKinds(std::string_view format) {
    std::vector<Takes> kinds;
    bool isFillable = true;
    std::size_t next = 0;
    const auto note = [&](const FormatConversion& conversion) {
        if (conversion.takes == Takes::Percent) {
            return;
        }
        const std::size_t index = conversion.position > 0 ? conversion.position - 1 : next++;
        if (conversion.takes == Takes::Nothing || index >= kHighestFormatPosition) {
            isFillable = false;
            return;
        }
        kinds.resize(std::max(kinds.size(), index + 1), Takes::Nothing);
        isFillable = isFillable && (kinds[index] == Takes::Nothing || kinds[index] == conversion.takes);
        kinds[index] = conversion.takes;
    };
    readFormat(
        format, [](std::string_view) {}, note);
    return isFillable ? std::optional(std::move(kinds)) : std::nullopt;
}

} // namespace

std::string stringWithFormat(std::string_view format, std::initializer_list<FormatArgument> arguments) {
    std::string text;
    std::size_t next = 0;
    const auto fill = [&](const FormatConversion& conversion) {
        if (conversion.takes == Takes::Percent) {
            text += '%';
        } else if (const auto* const argument = argumentOf(conversion, arguments, next)) {
            appendArgument(text, conversion, *argument);
        } else {
            text += conversion.written;
        }
    };
    readFormat(
        format, [&text](std::string_view literal) { text += literal; }, fill);
    return text;
}

bool formatsAgree(std::string_view original, std::string_view translated) {
    const auto kinds = takenKinds(original);
    return kinds && kinds == takenKinds(translated);
}

} // namespace exifcard
