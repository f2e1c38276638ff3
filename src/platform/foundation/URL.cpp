#include "platform/foundation/URL.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace exifcard {
namespace {

bool isUnreserved(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("-._~/").find(character) != std::string_view::npos;
}

std::string percentEscaped(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : path) {
        if (isUnreserved(character)) {
            escaped += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        escaped += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
    }
    return escaped;
}

/// A percent sign that two hexadecimal digits do not follow stays as it is.
std::string percentUnescaped(std::string_view text) {
    constexpr std::size_t kEscapeLength = 3;
    std::string unescaped;
    while (!text.empty()) {
        unsigned char byte = 0;
        const char* const end = text.data() + std::min(text.size(), kEscapeLength);
        const bool isEscape = text.front() == '%' && text.size() >= kEscapeLength &&
                              std::from_chars(text.data() + 1, end, byte, 16).ptr == end;
        unescaped += isEscape ? static_cast<char>(byte) : text.front();
        text.remove_prefix(isEscape ? kEscapeLength : 1);
    }
    return unescaped;
}

/// What stands between host and query, or nothing for a text without a scheme.
std::optional<std::string_view> escapedPath(std::string_view url) {
    constexpr std::string_view kAfterScheme = "://";
    constexpr std::string_view kSchemeCharacters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.";
    const auto schemeLength = url.find_first_not_of(kSchemeCharacters);
    if (schemeLength == 0 || schemeLength == std::string_view::npos ||
        !url.substr(schemeLength).starts_with(kAfterScheme)) {
        return std::nullopt;
    }
    url.remove_prefix(schemeLength + kAfterScheme.size());
    url = url.substr(0, url.find_first_of("?#"));
    return url.substr(std::min(url.find('/'), url.size()));
}

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) {
        path.remove_suffix(1);
    }
    return path;
}

/// Where the extension's dot stands in the last component; npos without one.
/// A dot that begins the name or ends it makes no extension.
std::size_t extensionDot(std::string_view path) {
    const auto slash = path.rfind('/');
    const std::size_t nameStart = slash == std::string_view::npos ? 0 : slash + 1;
    const auto dot = path.rfind('.');
    const bool isInside = dot != std::string_view::npos && dot > nameStart && dot + 1 < path.size();
    return isInside ? dot : std::string_view::npos;
}

} // namespace

URL URL::withString(std::string text) {
    URL url;
    url._text = std::move(text);
    return url;
}

URL URL::fileURLWithPath(std::string_view path) {
    return withString("file://" + percentEscaped(path));
}

std::string URL::path() const {
    const auto escaped = escapedPath(_text);
    return escaped ? percentUnescaped(*escaped) : _text;
}

std::string URL::lastPathComponent() const {
    // Cut before the escapes are undone: an escaped slash is part of a name.
    const auto escaped = escapedPath(_text);
    return escaped ? percentUnescaped(exifcard::lastPathComponent(*escaped))
                   : exifcard::lastPathComponent(_text);
}

std::string lastPathComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const auto slash = path.rfind('/');
    return std::string(slash == std::string_view::npos || path.size() == 1 ? path : path.substr(slash + 1));
}

std::string stringByDeletingPathExtension(std::string_view path) {
    path = withoutTrailingSlashes(path);
    return std::string(path.substr(0, extensionDot(path)));
}

std::string pathExtension(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const auto dot = extensionDot(path);
    return dot == std::string_view::npos ? std::string() : std::string(path.substr(dot + 1));
}

} // namespace exifcard
