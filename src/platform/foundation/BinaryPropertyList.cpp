#include "platform/foundation/BinaryPropertyList.h"

#include "platform/foundation/CheckedArithmetic.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/PropertyListDate.h"
#include "platform/foundation/PropertyListText.h"

#include <unicode/unistr.h>

#include <bit>
#include <cstdint>

namespace exifcard::propertylist {
namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;
/// Objects beyond this many cannot be told apart from a size that overflows.
constexpr std::size_t kMostCounted = std::size_t(1) << 32U;

std::string textOfUTF16(std::string_view bigEndian) {
    icu::UnicodeString text;
    for (std::size_t index = 0; index + 1 < bigEndian.size(); index += 2) {
        const auto high = static_cast<unsigned char>(bigEndian[index]);
        const auto low = static_cast<unsigned char>(bigEndian[index + 1]);
        text.append(static_cast<char16_t>(high << 8U | low));
    }
    std::string utf8;
    return text.toUTF8String(utf8);
}

} // namespace

BinaryPropertyList::BinaryPropertyList(std::string_view bytes) : _bytes(bytes) {
    if (_bytes.size() < kHeaderSize + kTrailerSize) {
        return;
    }
    const std::size_t trailer = _bytes.size() - kTrailerSize;
    _offsetSize = number(trailer + 6, 1).value_or(0);
    _referenceSize = number(trailer + 7, 1).value_or(0);
    _count = number(trailer + 8, 8).value_or(0);
    _root = number(trailer + 16, 8).value_or(0);
    _table = number(trailer + 24, 8).value_or(0);
}

/// The big-endian number of `size` bytes at `position`.
std::optional<std::size_t> BinaryPropertyList::number(std::size_t position, std::size_t size) const {
    const auto end = checkedSum(position, size);
    if (size == 0 || size > 8 || !end || *end > _bytes.size()) {
        return std::nullopt;
    }
    std::size_t value = 0;
    for (std::size_t index = position; index < *end; ++index) {
        value = value << 8U | static_cast<unsigned char>(_bytes[index]);
    }
    return value;
}

std::optional<BinaryPropertyList::Object> BinaryPropertyList::objectAt(std::size_t index) const {
    const auto entry = checkedProduct(index, _offsetSize);
    const auto position = entry ? checkedSum(_table, *entry) : std::nullopt;
    const auto offset = position ? number(*position, _offsetSize) : std::nullopt;
    const auto marker = offset && index < _count ? number(*offset, 1) : std::nullopt;
    if (!marker) {
        return std::nullopt;
    }
    const Object object = {static_cast<Kind>(*marker >> 4U), *marker & 0xfU, *offset + 1};
    const bool hasSizeAfterMarker =
        object.kind >= Kind::Data && object.kind != Kind::Reference && object.size == 0xf;
    return hasSizeAfterMarker ? withSizeAfterMarker(object) : object;
}

/// The object of which the size is too big for the marker and stands as a number after it.
std::optional<BinaryPropertyList::Object> BinaryPropertyList::withSizeAfterMarker(Object object) const {
    const auto marker = number(object.content, 1);
    if (!marker || static_cast<Kind>(*marker >> 4U) != Kind::Integer) {
        return std::nullopt;
    }
    const std::size_t width = std::size_t(1) << (*marker & 0xfU);
    const auto size = number(object.content + 1, width);
    if (!size || *size > kMostCounted) {
        return std::nullopt;
    }
    return Object{object.kind, *size, object.content + 1 + width};
}

std::optional<std::size_t> BinaryPropertyList::elementAt(const Object& container, std::size_t place) const {
    const std::size_t places = container.kind == Kind::Dictionary ? 2 * container.size : container.size;
    const bool isContainer = container.kind == Kind::Dictionary || container.kind == Kind::Array;
    const auto offset = checkedProduct(place, _referenceSize);
    const auto position = offset ? checkedSum(container.content, *offset) : std::nullopt;
    return isContainer && place < places && position ? number(*position, _referenceSize) : std::nullopt;
}

std::optional<std::size_t> BinaryPropertyList::referenceIn(const Object& object) const {
    return object.kind == Kind::Reference ? number(object.content, object.size + 1) : std::nullopt;
}

std::string_view BinaryPropertyList::contentOf(const Object& object) const {
    const bool holdsBytes = object.isText() || object.kind == Kind::Data;
    const std::size_t length = object.kind == Kind::UTF16 ? 2 * object.size : object.size;
    const bool isWithin = object.content <= _bytes.size() && length <= _bytes.size() - object.content;
    return holdsBytes && isWithin ? _bytes.substr(object.content, length) : std::string_view();
}

Value BinaryPropertyList::scalarOf(const Object& object) const {
    switch (object.kind) {
    case Kind::Simple:
        return object.size == 0x8 || object.size == 0x9 ? Value(object.size == 0x9) : Value();
    case Kind::Integer:
    case Kind::Real:
    case Kind::Date:
        return numberOf(object);
    case Kind::Data:
        return Data::fromText(contentOf(object));
    case Kind::ASCII:
        return wellFormedText(contentOf(object));
    case Kind::UTF16:
        return wellFormedText(textOfUTF16(contentOf(object)));
    default:
        return {};
    }
}

Value BinaryPropertyList::numberOf(const Object& object) const {
    if (object.size > 4) {
        return {};
    }
    const std::size_t width = std::size_t(1) << object.size;
    // An integer of sixteen bytes holds a large positive number in its lower half.
    const bool isWide = object.kind == Kind::Integer && width == 16;
    const auto bits = number(object.content + (isWide ? 8 : 0), isWide ? 8 : width);
    if (!bits) {
        return {};
    }
    if (object.kind == Kind::Integer) {
        return static_cast<std::int64_t>(*bits);
    }
    if (object.kind == Kind::Real && width == 4) {
        return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(*bits)));
    }
    const double real = std::bit_cast<double>(*bits);
    if (width != 8) {
        return {};
    }
    return object.kind == Kind::Date ? Value(exifcard::Date{kEpochSince1970 + real}) : Value(real);
}

} // namespace exifcard::propertylist
