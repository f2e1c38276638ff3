#include "platform/imageio/TiffBlock.h"

#include "platform/foundation/CheckedArithmetic.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <limits>

namespace exifcard {
namespace {

constexpr std::size_t kEntrySize = 12;
constexpr std::size_t kInlineSize = 4;

/// The bytes of one element; 0 for a type that is none.
std::size_t elementSize(TiffType type) {
    constexpr std::uint8_t kSizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    const auto number = static_cast<std::size_t>(type);
    if (type == TiffType::Utf8) {
        return 1;
    }
    return number < std::size(kSizes) ? kSizes[number] : 0;
}

/// 42 in a TIFF; "RO" and "RS" in Olympus' raw files, "U" in Panasonic's.
bool isTiffMark(std::uint16_t mark) {
    constexpr std::uint16_t kMarks[] = {42, 0x4f52, 0x5352, 0x0055};
    return std::ranges::count(kMarks, mark) > 0;
}

} // namespace

TiffDirectory::TiffDirectory(ByteView bytes, std::uint32_t offset)
    : _bytes(bytes)
    , _firstEntry(std::size_t(offset) + 2) {
    const std::size_t stated = offset > 0 ? bytes.shortAt(offset).value_or(0) : 0;
    const std::size_t room = bytes.size() > _firstEntry ? (bytes.size() - _firstEntry) / kEntrySize : 0;
    _count = static_cast<std::uint32_t>(std::min(stated, room));
}

std::optional<TiffEntry> TiffDirectory::entryAt(std::uint32_t index) const {
    const std::size_t place = _firstEntry + index * kEntrySize;
    const auto raw = _bytes.part(place, kEntrySize);
    if (index >= _count || raw.empty()) {
        return std::nullopt;
    }
    TiffEntry entry;
    entry.order = _bytes.order();
    entry.tag = ByteView::load<std::uint16_t>(raw.data(), entry.order);
    entry.type = static_cast<TiffType>(ByteView::load<std::uint16_t>(raw.data() + 2, entry.order));
    entry.count = ByteView::load<std::uint32_t>(raw.data() + 4, entry.order);
    const auto size = checkedProduct(entry.count, elementSize(entry.type)).value_or(0);
    const std::size_t value =
        size <= kInlineSize ? place + 8 : ByteView::load<std::uint32_t>(raw.data() + 8, entry.order);
    entry.bytes = _bytes.part(value, size);
    return entry.bytes.empty() ? std::nullopt : std::optional(entry);
}

std::optional<TiffEntry> TiffDirectory::find(std::uint16_t tag) const {
    for (std::uint32_t index = 0; index < _count; ++index) {
        const auto stored = _bytes.shortAt(_firstEntry + index * kEntrySize);
        if (stored == tag) {
            return entryAt(index);
        }
    }
    return std::nullopt;
}

std::optional<std::uint32_t> TiffDirectory::numberFor(std::uint16_t tag) const {
    const auto entry = find(tag);
    const auto number = entry ? integerAt(*entry, 0) : std::nullopt;
    const bool fits = number && *number >= 0 && *number <= std::numeric_limits<std::uint32_t>::max();
    return fits ? std::optional(static_cast<std::uint32_t>(*number)) : std::nullopt;
}

std::uint32_t TiffDirectory::nextDirectory() const {
    return _bytes.longAt(_firstEntry + _count * kEntrySize).value_or(0);
}

std::optional<TiffBlock> TiffBlock::fromBytes(std::span<const std::uint8_t> bytes) {
    const ByteView whole(bytes);
    const bool isLittle = whole.hasTextAt(0, "II");
    if (!isLittle && !whole.hasTextAt(0, "MM")) {
        return std::nullopt;
    }
    const ByteView view(bytes, isLittle ? ByteOrder::Little : ByteOrder::Big);
    const auto mark = view.shortAt(2);
    const auto offset = view.longAt(4);
    return offset && isTiffMark(*mark) ? std::optional(TiffBlock(view, *offset)) : std::nullopt;
}

} // namespace exifcard
