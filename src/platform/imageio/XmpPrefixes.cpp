#include "platform/imageio/XmpPrefixes.h"

#include <algorithm>
#include <ranges>

namespace exifcard {
namespace {

constexpr std::string_view kDeclaration = "xmlns";
/// Editors declare some thirty.
constexpr std::size_t kMostDeclared = 500;

struct Parts {
    std::string_view prefix;
    std::string_view name;
};

Parts partsOf(std::string_view name) {
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? Parts{{}, name}
                                           : Parts{name.substr(0, colon), name.substr(colon + 1)};
}

} // namespace

XmpPrefixes::XmpPrefixes(std::span<const std::string_view> known) : _known(known) {
    _declared.push_back({"xml", kXmlAddress, 0});
}

bool XmpPrefixes::isDeclaration(std::string_view attribute) {
    const auto [prefix, name] = partsOf(attribute);
    return prefix.empty() ? name == kDeclaration : prefix == kDeclaration;
}

bool XmpPrefixes::declare(std::string_view attribute, std::string_view value, std::size_t depth) {
    if (!isDeclaration(attribute)) {
        return true;
    }
    const auto [prefix, name] = partsOf(attribute);
    const auto known = std::ranges::find(_known, value);
    _declared.push_back({std::string(prefix.empty() ? prefix : name),
        known == _known.end() ? std::string_view() : *known, depth});
    return _declared.size() <= kMostDeclared;
}

void XmpPrefixes::leave(std::size_t depth) {
    while (!_declared.empty() && _declared.back().depth >= depth) {
        _declared.pop_back();
    }
}

std::optional<std::string_view> XmpPrefixes::addressOf(std::string_view prefix) const {
    const auto innermostFirst = _declared | std::views::reverse;
    const auto found = std::ranges::find(innermostFirst, prefix, &Declared::prefix);
    return found == innermostFirst.end() ? std::nullopt : std::optional(found->address);
}

std::optional<QualifiedName> XmpPrefixes::element(std::string_view name) const {
    const Parts parts = partsOf(name);
    const auto address = addressOf(parts.prefix);
    const bool isPlain = parts.prefix.empty();
    return address || isPlain ? std::optional(QualifiedName{address.value_or(std::string_view()), parts.name})
                              : std::nullopt;
}

std::optional<QualifiedName> XmpPrefixes::attribute(std::string_view name) const {
    return name.find(':') == std::string_view::npos ? QualifiedName{{}, name} : element(name);
}

} // namespace exifcard
