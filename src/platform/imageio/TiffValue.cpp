#include "platform/imageio/TiffValue.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/TextEncoding.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <vector>

namespace exifcard {
namespace {

/// The longest list that any tag of the dictionary needs is a transfer function of 3 · 256 numbers.
constexpr std::uint32_t kMostElements = 4096;
/// A text or block beyond this is no caption; a file may claim one as long as itself.
constexpr std::size_t kMostBytes = std::size_t(1) << 20U;
constexpr std::size_t kCharsetSize = 8;

template<typename Number>
Number loadAt(const TiffEntry& entry, std::size_t index) {
    return ByteView::load<Number>(entry.bytes.data() + index * sizeof(Number), entry.order);
}

template<typename Number>
std::optional<double> fractionAt(const TiffEntry& entry, std::size_t index) {
    const auto denominator = loadAt<Number>(entry, index * 2 + 1);
    return denominator == 0
               ? std::nullopt
               : std::optional(static_cast<double>(loadAt<Number>(entry, index * 2)) / denominator);
}

std::optional<double> finite(double number) {
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

Value valueOf(std::optional<std::int64_t> number) {
    return number ? Value(*number) : Value();
}

Value valueOf(std::optional<double> number) {
    return number ? Value(*number) : Value();
}

/// An array of what `numberAt` answers, with 0 where an element holds no number; nothing when none does.
template<typename Number>
Value listOf(const TiffEntry& entry, std::optional<Number> (*numberAt)(const TiffEntry&, std::size_t)) {
    if (entry.count > kMostElements) {
        return {};
    }
    bool hasAny = false;
    std::vector<Value> values;
    values.reserve(entry.count);
    for (std::size_t index = 0; index < entry.count; ++index) {
        const auto number = numberAt(entry, index);
        hasAny = hasAny || number;
        values.emplace_back(number.value_or(Number()));
    }
    return hasAny ? Value(std::make_shared<Array>(std::move(values))) : Value();
}

enum class CommentSet { Utf8, Utf16, Jis };

struct CommentPrefix {
    std::string_view name;
    CommentSet set;
};

/// How the eight bytes before a text begin. Writers are not strict about case and filling.
constexpr CommentPrefix kPrefixes[] = {
    {"ASCII", CommentSet::Utf8},
    {{"\0\0\0\0\0\0\0\0", kCharsetSize}, CommentSet::Utf8},
    {"        ", CommentSet::Utf8},
    {"UNICODE", CommentSet::Utf16},
    {"Unicode", CommentSet::Utf16},
    {"JIS", CommentSet::Jis},
};

/// UTF-16 in the order that a byte order mark tells, else in `order`.
std::string textFromUtf16(std::string_view bytes, ByteOrder order) {
    if (bytes.starts_with("\xfe\xff") || bytes.starts_with("\xff\xfe")) {
        order = bytes.front() == '\xfe' ? ByteOrder::Big : ByteOrder::Little;
        bytes.remove_prefix(2);
    }
    const bool isBig = order == ByteOrder::Big;
    const auto text =
        utf8FromEncoded(bytes, isBig ? TextEncoding::Utf16BigEndian : TextEncoding::Utf16LittleEndian);
    return std::string(textBeforeNul(text));
}

/// A text without a known prefix is one from its first byte on.
std::string commentText(std::string_view bytes, ByteOrder order) {
    const auto prefix = std::ranges::find_if(
        kPrefixes, [&](const CommentPrefix& known) { return bytes.starts_with(known.name); });
    if (prefix == std::end(kPrefixes) || bytes.size() < kCharsetSize) {
        return utf8FromUnknown(textBeforeNul(bytes));
    }
    const auto text = bytes.substr(kCharsetSize);
    if (prefix->set == CommentSet::Utf16) {
        return textFromUtf16(text, order);
    }
    return prefix->set == CommentSet::Jis ? utf8FromEncoded(textBeforeNul(text), TextEncoding::Iso2022Jp)
                                          : utf8FromUnknown(textBeforeNul(text));
}

} // namespace

std::optional<double> realAt(const TiffEntry& entry, std::size_t index) {
    if (index >= entry.count) {
        return std::nullopt;
    }
    switch (entry.type) {
    case TiffType::Rational:
        return fractionAt<std::uint32_t>(entry, index);
    case TiffType::SignedRational:
        return fractionAt<std::int32_t>(entry, index);
    case TiffType::Float:
        return finite(std::bit_cast<float>(loadAt<std::uint32_t>(entry, index)));
    case TiffType::Double:
        return finite(std::bit_cast<double>(loadAt<std::uint64_t>(entry, index)));
    default:
        const auto number = integerAt(entry, index);
        return number ? std::optional(static_cast<double>(*number)) : std::nullopt;
    }
}

std::optional<std::int64_t> integerAt(const TiffEntry& entry, std::size_t index) {
    if (index >= entry.count) {
        return std::nullopt;
    }
    switch (entry.type) {
    case TiffType::Byte:
    case TiffType::Undefined:
        return loadAt<std::uint8_t>(entry, index);
    case TiffType::SignedByte:
        return loadAt<std::int8_t>(entry, index);
    case TiffType::Short:
        return loadAt<std::uint16_t>(entry, index);
    case TiffType::SignedShort:
        return loadAt<std::int16_t>(entry, index);
    case TiffType::Long:
    case TiffType::Directory:
        return loadAt<std::uint32_t>(entry, index);
    case TiffType::SignedLong:
        return loadAt<std::int32_t>(entry, index);
    case TiffType::Ascii:
    case TiffType::Utf8:
        return std::nullopt;
    default:
        const auto number = realAt(entry, index);
        return number ? std::optional(saturatingInteger(*number)) : std::nullopt;
    }
}

std::string textOf(const TiffEntry& entry) {
    const bool isText = entry.type == TiffType::Ascii || entry.type == TiffType::Utf8 ||
                        entry.type == TiffType::Undefined || entry.type == TiffType::Byte;
    if (!isText || entry.bytes.size() > kMostBytes) {
        return {};
    }
    return utf8FromUnknown(textBeforeNul(textView(entry.bytes)));
}

Value integerFromEntry(const TiffEntry& entry) {
    return entry.count == 1 ? valueOf(integerAt(entry, 0)) : integersFromEntry(entry);
}

Value realFromEntry(const TiffEntry& entry) {
    return entry.count == 1 ? valueOf(realAt(entry, 0)) : realsFromEntry(entry);
}

Value textFromEntry(const TiffEntry& entry) {
    auto text = textOf(entry);
    return text.empty() ? Value() : Value(std::move(text));
}

Value integersFromEntry(const TiffEntry& entry) {
    return listOf<std::int64_t>(entry, integerAt);
}

Value realsFromEntry(const TiffEntry& entry) {
    return listOf<double>(entry, realAt);
}

Value firstByteFromEntry(const TiffEntry& entry) {
    return entry.bytes.empty() ? Value() : Value(std::int64_t(entry.bytes.front()));
}

Value dataFromEntry(const TiffEntry& entry) {
    if (entry.bytes.size() > kMostBytes) {
        return {};
    }
    return Data::fromBytes({entry.bytes.begin(), entry.bytes.end()});
}

Value versionFromDigits(std::string_view digits) {
    if (digits.size() < 4 || digits.substr(0, 4).find_first_not_of("0123456789") != std::string_view::npos) {
        return {};
    }
    auto version = Array::make({integerFromText(digits.substr(0, 2)), integerFromText(digits.substr(2, 1))});
    if (digits[3] != '0') {
        version->addObject(integerFromText(digits.substr(3, 1)));
    }
    return version;
}

Value versionFromEntry(const TiffEntry& entry) {
    return versionFromDigits(textView(entry.bytes));
}

Value commentFromEntry(const TiffEntry& entry) {
    if (entry.bytes.size() > kMostBytes) {
        return {};
    }
    const auto text = commentText(textView(entry.bytes), entry.order);
    const auto visible = withoutTrailingBlanks(text);
    return visible.empty() ? Value() : Value(visible);
}

Value angleFromEntry(const TiffEntry& entry) {
    const auto degrees = realAt(entry, 0);
    if (!degrees) {
        return {};
    }
    return std::abs(*degrees + realAt(entry, 1).value_or(0) / 60 + realAt(entry, 2).value_or(0) / 3600);
}

Value timeOfDayFromEntry(const TiffEntry& entry) {
    const auto hours = realAt(entry, 0);
    const auto minutes = realAt(entry, 1);
    const auto seconds = realAt(entry, 2);
    const bool isTime = hours && minutes && seconds && *hours >= 0 && *hours < 24 && *minutes >= 0 &&
                        *minutes < 60 && *seconds >= 0 && *seconds < 61;
    if (!isTime) {
        return {};
    }
    const auto hundredths = static_cast<int>(*seconds * 100 + 0.5);
    auto text = fmt::format(
        "{:02}:{:02}:{:02}", static_cast<int>(*hours), static_cast<int>(*minutes), hundredths / 100);
    if (hundredths % 100 != 0) {
        text += fmt::format(".{:02}", hundredths % 100);
    }
    return text;
}

} // namespace exifcard
