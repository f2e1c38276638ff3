#include "platform/imageio/IccProfile.h"

#include "platform/imageio/ByteView.h"
#include "platform/imageio/TextEncoding.h"

#include <algorithm>

namespace exifcard {
namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kTagRowSize = 12;
constexpr std::size_t kLanguageRowSize = 12;
/// Real profiles have about twenty tags and fifty languages.
constexpr std::uint32_t kMostRows = 1000;

std::string trimmed(std::string_view text) {
    return std::string(withoutTrailingBlanks(textBeforeNul(text)));
}

/// The text of a 'desc' tag of the second version of profiles: a counted ASCII text.
std::string plainDescription(const ByteView& tag) {
    const std::size_t length = tag.longAt(8).value_or(0);
    return trimmed(utf8FromUnknown(textBeforeNul(textView(tag.part(12, length)))));
}

/// The text of an 'mluc' tag: rows of language, country, length and offset of a text in UTF-16.
std::string localizedDescription(const ByteView& tag) {
    const std::uint32_t count = std::min(tag.longAt(8).value_or(0), kMostRows);
    const std::size_t rowSize = std::max<std::size_t>(tag.longAt(12).value_or(0), kLanguageRowSize);
    std::size_t row = 16;
    for (std::uint32_t index = 0; index < count; ++index) {
        if (tag.hasTextAt(16 + index * rowSize, "en")) {
            row = 16 + index * rowSize;
            break;
        }
    }
    const auto text = tag.part(tag.longAt(row + 8).value_or(0), tag.longAt(row + 4).value_or(0));
    return trimmed(utf8FromEncoded(textView(text), TextEncoding::Utf16BigEndian));
}

} // namespace

std::string descriptionOfIccProfile(std::span<const std::uint8_t> profile) {
    const ByteView view(profile);
    const std::uint32_t count = std::min(view.longAt(kHeaderSize).value_or(0), kMostRows);
    for (std::uint32_t index = 0; index < count; ++index) {
        const std::size_t row = kHeaderSize + 4 + index * kTagRowSize;
        if (!view.hasTextAt(row, "desc")) {
            continue;
        }
        const ByteView tag(view.part(view.longAt(row + 4).value_or(0), view.longAt(row + 8).value_or(0)));
        return tag.hasTextAt(0, "mluc") ? localizedDescription(tag) : plainDescription(tag);
    }
    return {};
}

} // namespace exifcard
