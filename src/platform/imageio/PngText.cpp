#include "platform/imageio/PngText.h"

#include "platform/imageio/TextEncoding.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace exifcard {
namespace {

/// Compressed text may claim any size; an Exif block in digits takes 130 KB, a colour profile up to 4 MB.
constexpr std::size_t kMostInflatedBytes = std::size_t(16) << 20U;
constexpr std::size_t kInflateStep = std::size_t(64) << 10U;
constexpr std::string_view kProfileKeyword = "Raw profile type ";
constexpr std::string_view kExifName("Exif\0\0", 6);

using InflateState = std::unique_ptr<z_stream, decltype(&inflateEnd)>;

/// The bytes of a zlib stream, or nothing when it is broken or inflates beyond the bound.
std::optional<std::string> inflated(std::string_view bytes) {
    z_stream stream = {};
    if (bytes.size() > std::numeric_limits<uInt>::max() || inflateInit(&stream) != Z_OK) {
        return std::nullopt;
    }
    const InflateState state(&stream, inflateEnd);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): zlib reads what it takes as not const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::string result;
    int status = Z_OK;
    while (status == Z_OK && result.size() < kMostInflatedBytes) {
        const std::size_t done = result.size();
        result.resize(done + kInflateStep);
        stream.next_out = reinterpret_cast<Bytef*>(result.data() + done);
        stream.avail_out = static_cast<uInt>(kInflateStep);
        status = inflate(&stream, Z_NO_FLUSH);
        result.resize(result.size() - stream.avail_out);
    }
    return status == Z_STREAM_END ? std::optional(std::move(result)) : std::nullopt;
}

/// Takes the text up to the next NUL off the front, and the NUL; nothing when there is none.
std::optional<std::string_view> takeField(std::string_view& rest) {
    const auto end = rest.find('\0');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    const auto field = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    return field;
}

/// What follows the keyword of an "iTXt" chunk: two bytes about compression, language, translated keyword.
std::optional<std::string> internationalText(std::string_view rest) {
    if (rest.size() < 2) {
        return std::nullopt;
    }
    const bool isCompressed = rest.front() == 1;
    rest.remove_prefix(2);
    if (!takeField(rest) || !takeField(rest)) {
        return std::nullopt;
    }
    return isCompressed ? inflated(rest) : std::string(rest);
}

/// -1 for what is no hexadecimal digit.
int digitValue(char digit) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const bool isUpperCase = digit >= 'A' && digit <= 'F';
    const auto value = kDigits.find(static_cast<char>(isUpperCase ? digit - 'A' + 'a' : digit));
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

Data bytesFromDigits(std::string_view digits) {
    std::vector<std::uint8_t> bytes;
    int upper = -1;
    for (const char digit : digits) {
        const int value = digitValue(digit);
        if (value >= 0 && upper >= 0) {
            bytes.push_back(static_cast<std::uint8_t>(upper * 16 + value));
        }
        if (value >= 0) {
            upper = upper >= 0 ? -1 : value;
        }
    }
    return Data::fromBytes(std::move(bytes));
}

} // namespace

std::optional<PngText> readPngText(std::string_view chunkName, const Data& content) {
    std::string_view rest = content.text();
    const auto keyword = takeField(rest);
    if (!keyword) {
        return std::nullopt;
    }
    std::optional<std::string> text;
    if (chunkName == "iTXt") {
        text = internationalText(rest);
    } else if (chunkName == "zTXt") {
        text = inflated(rest.substr(std::min<std::size_t>(1, rest.size()))); // Behind the method.
    } else {
        text = std::string(rest);
    }
    if (!text) {
        return std::nullopt;
    }
    return PngText{utf8FromUnknown(*keyword), utf8FromUnknown(*text)};
}

Data pngProfile(const Data& content) {
    std::string_view rest = content.text();
    if (!takeField(rest) || rest.empty()) {
        return {};
    }
    const auto profile = inflated(rest.substr(1));
    return profile ? Data::fromText(*profile) : Data();
}

std::optional<PngEmbeddedProfile> embeddedProfile(const PngText& text) {
    if (!text.keyword.starts_with(kProfileKeyword)) {
        return std::nullopt;
    }
    // A line with the name and a line with the length stand before the digits.
    std::string_view rest = text.text;
    for (int line = 0; line < 3; ++line) {
        const auto end = rest.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        rest.remove_prefix(end + 1);
    }
    Data content = bytesFromDigits(rest);
    if (content.text().starts_with(kExifName)) {
        content = content.slice(kExifName.size(), content.size());
    }
    return PngEmbeddedProfile{text.keyword.substr(kProfileKeyword.size()), content};
}

} // namespace exifcard
