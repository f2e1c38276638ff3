#include "cli/Base64.h"

#include <algorithm>
#include <cstddef>

namespace exifcard {
namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

std::string base64(std::span<const std::uint8_t> bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t start = 0; start < bytes.size(); start += 3) {
        const auto group = bytes.subspan(start, std::min<std::size_t>(3, bytes.size() - start));
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < 3; ++index) {
            bits = bits << 8 | (index < group.size() ? group[index] : 0U);
        }
        for (std::size_t index = 0; index < 4; ++index) {
            text += index <= group.size() ? kDigits[bits >> (18 - 6 * index) & 63] : '=';
        }
    }
    return text;
}

} // namespace exifcard
