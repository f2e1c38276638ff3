#include "platform/imageio/HeifMeta.h"

#include "platform/foundation/CheckedArithmetic.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace exifcard {
namespace {

// A picture of 400 megapixels in tiles of 512 × 512 pixels has some 1,600 items.
constexpr std::size_t kMaximumItems = 4096;
// Each tile is named once; thumbnails, metadata and auxiliary pictures name their picture.
constexpr std::size_t kMaximumReferences = 2 * kMaximumItems;
// Writers put a block of metadata in one piece; the format allows more.
constexpr std::size_t kMaximumExtents = 256;
// Only a block in several pieces is copied. The largest ones, edits kept as XMP, have a few megabytes.
constexpr std::size_t kMaximumJoinedSize = std::size_t(16) << 20U;

/// Every list begins with its version and flags.
struct ListHead {
    std::uint64_t version;
    std::uint64_t flags;
};

ListHead takeListHead(ByteCursor& cursor) {
    const auto version = cursor.number(1);
    return {version, cursor.number(3)};
}

std::uint32_t takeId(ByteCursor& cursor, bool isLong) {
    return static_cast<std::uint32_t>(cursor.number(isLong ? 4 : 2));
}

std::optional<HeifItem> readItem(ByteSpan payload) {
    ByteCursor cursor(payload);
    const ListHead head = takeListHead(cursor);
    HeifItem item;
    item.id = takeId(cursor, head.version >= 3);
    item.isHidden = (head.flags & 1U) != 0;
    cursor.skip(2); // Protection.
    if (head.version >= 2) {
        item.type = static_cast<BoxType>(cursor.number(4));
    } else {
        item.type = boxType("mime"); // Before version 2 there was no other.
    }
    if (cursor.isBroken()) {
        return std::nullopt;
    }
    cursor.text(); // The item's name.
    if (item.type == boxType("mime")) {
        item.contentType = cursor.text();
    }
    return item;
}

/// Where the bytes of an item lie, as "iloc" tells it.
struct ItemLocation {
    enum class Origin : std::uint8_t { File = 0, OwnBytes = 1 };
    struct Extent {
        std::size_t offset = 0;
        std::size_t length = 0; ///< 0: to the end.
    };
    Origin origin = Origin::File;
    std::vector<Extent> extents;
};

/// Goes over the entries of "iloc".
class LocationList {
public:
    explicit LocationList(ByteSpan payload)
        : _cursor(payload)
        , _version(takeListHead(_cursor).version)
        , _sizes(_cursor.number(2))
        , _offsetSize((_sizes >> 12U) & 0xFU)
        , _lengthSize((_sizes >> 8U) & 0xFU)
        , _baseSize((_sizes >> 4U) & 0xFU)
        , _indexSize(_version == 0 ? 0 : _sizes & 0xFU)
        , _itemCount(_cursor.number(_version < 2 ? 2 : 4)) {}

    std::optional<ItemLocation> location(std::uint32_t id) {
        const auto fits = [](std::size_t size) { return size == 0 || size == 4 || size == 8; };
        const std::array sizes = {_offsetSize, _lengthSize, _baseSize, _indexSize};
        if (_version > 2 || _itemCount > kMaximumItems || !std::ranges::all_of(sizes, fits)) {
            return std::nullopt;
        }
        for (std::uint64_t index = 0; index < _itemCount && !_cursor.isBroken(); ++index) {
            const bool isWanted = takeId(_cursor, _version == 2) == id;
            const auto method = _version == 0 ? 0 : _cursor.number(2) & 0xFU;
            _cursor.skip(2); // Which file; only this one is ever read.
            const auto base = _cursor.number(_baseSize);
            const auto extentCount = _cursor.number(2);
            if (isWanted) {
                return takeExtents(method, base, extentCount);
            }
            _cursor.skip(extentCount * (_indexSize + _offsetSize + _lengthSize));
        }
        return std::nullopt;
    }

private:
    std::optional<ItemLocation> takeExtents(std::uint64_t method, std::uint64_t base, std::uint64_t count) {
        // Method 2 takes the bytes out of another item, which could lead in circles; no camera writes it.
        if (method > 1 || count > kMaximumExtents) {
            return std::nullopt;
        }
        ItemLocation location;
        location.origin = static_cast<ItemLocation::Origin>(method);
        for (std::uint64_t index = 0; index < count; ++index) {
            _cursor.skip(_indexSize);
            const auto offset = checkedSum(base, _cursor.number(_offsetSize));
            const std::size_t length = _cursor.number(_lengthSize);
            if (!offset || _cursor.isBroken()) {
                return std::nullopt;
            }
            location.extents.push_back({*offset, length});
        }
        return location;
    }

    ByteCursor _cursor;
    std::uint64_t _version;
    std::uint64_t _sizes; // The four that follow, four bits each.
    std::size_t _offsetSize;
    std::size_t _lengthSize;
    std::size_t _baseSize;
    std::size_t _indexSize;
    std::uint64_t _itemCount;
};

Data joinedExtents(const std::vector<ItemLocation::Extent>& extents, const Data& origin) {
    std::vector<std::uint8_t> joined;
    for (const auto& extent : extents) {
        const Data piece = origin.slice(extent.offset, extent.length);
        if (piece.size() > kMaximumJoinedSize - joined.size()) {
            return {};
        }
        joined.insert(joined.end(), piece.bytes().begin(), piece.bytes().end());
    }
    return Data::fromBytes(std::move(joined));
}

/// The numbers of an item's properties in one "ipma" list, from 1.
std::vector<std::size_t> propertyIndexes(ByteSpan associations, std::uint32_t id) {
    ByteCursor cursor(associations);
    const ListHead head = takeListHead(cursor);
    const std::size_t indexSize = (head.flags & 1U) != 0 ? 2 : 1;
    const std::uint64_t essentialBit = indexSize == 2 ? 0x8000 : 0x80;
    const auto itemCount = std::min<std::uint64_t>(cursor.number(4), kMaximumItems);
    for (std::uint64_t item = 0; item < itemCount && !cursor.isBroken(); ++item) {
        const bool isWanted = takeId(cursor, head.version >= 1) == id;
        const auto indexCount = cursor.number(1);
        if (!isWanted) {
            cursor.skip(indexCount * indexSize);
            continue;
        }
        std::vector<std::size_t> indexes;
        for (std::uint64_t index = 0; index < indexCount; ++index) {
            indexes.push_back(cursor.number(indexSize) & ~essentialBit);
        }
        return indexes;
    }
    return {};
}

} // namespace

std::optional<HeifMeta> HeifMeta::read(ByteSpan payload) {
    ByteCursor cursor(payload);
    takeListHead(cursor);
    HeifMeta meta;
    bool isWhole = true;
    BoxWalk walk(cursor.rest());
    while (const auto list = walk.next()) {
        isWhole = isWhole && meta.takeList(*list);
    }
    std::ranges::stable_sort(meta._items, {}, &HeifItem::id);
    if (walk.isBroken() || !isWhole || meta.item(meta._primaryId) == nullptr) {
        return std::nullopt;
    }
    return meta;
}

bool HeifMeta::takeList(const Box& list) {
    switch (list.type) {
    case boxType("pitm"):
        return readPrimaryId(list.payload);
    case boxType("iinf"):
        return readItems(list.payload);
    case boxType("iref"):
        return readReferences(list.payload);
    case boxType("iprp"):
        return readProperties(list.payload);
    case boxType("iloc"):
        _locations = list.payload;
        return true;
    case boxType("idat"):
        _ownBytes = list.payload;
        return true;
    default:
        return true;
    }
}

bool HeifMeta::readPrimaryId(ByteSpan primaryItem) {
    ByteCursor cursor(primaryItem);
    _primaryId = takeId(cursor, takeListHead(cursor).version >= 1);
    return !cursor.isBroken();
}

bool HeifMeta::readItems(ByteSpan itemInfo) {
    ByteCursor cursor(itemInfo);
    const ListHead head = takeListHead(cursor);
    cursor.skip(head.version == 0 ? 2 : 4); // The count; the boxes tell it too.
    BoxWalk walk(cursor.rest());
    while (const auto box = walk.next()) {
        if (box->type != boxType("infe")) {
            continue;
        }
        const auto item = readItem(box->payload);
        if (!item || _items.size() == kMaximumItems) {
            return false;
        }
        _items.push_back(*item);
    }
    return !walk.isBroken();
}

bool HeifMeta::readReferences(ByteSpan itemReferences) {
    ByteCursor cursor(itemReferences);
    const bool isLong = takeListHead(cursor).version >= 1;
    BoxWalk walk(cursor.rest());
    while (const auto box = walk.next()) {
        ByteCursor ids(box->payload);
        const auto from = takeId(ids, isLong);
        const auto count = ids.number(2);
        if (count > kMaximumReferences - _references.size()) {
            return false;
        }
        for (std::uint64_t index = 0; index < count; ++index) {
            _references.push_back({box->type, from, takeId(ids, isLong)});
        }
        if (ids.isBroken()) {
            return false;
        }
    }
    return !walk.isBroken();
}

bool HeifMeta::readProperties(ByteSpan itemProperties) {
    BoxWalk walk(itemProperties);
    while (const auto box = walk.next()) {
        if (box->type == boxType("ipma")) {
            _associations.push_back(box->payload);
            continue;
        }
        BoxWalk container(box->type == boxType("ipco") ? box->payload : ByteSpan());
        while (const auto property = container.next()) {
            _properties.push_back(*property);
        }
        if (container.isBroken()) {
            return false;
        }
    }
    return !walk.isBroken();
}

const HeifItem* HeifMeta::item(std::uint32_t id) const {
    const auto found = std::ranges::lower_bound(_items, id, {}, &HeifItem::id);
    return found != _items.end() && found->id == id ? &*found : nullptr;
}

std::vector<Box> HeifMeta::properties(std::uint32_t id) const {
    std::vector<std::size_t> indexes;
    for (const ByteSpan associations : _associations) {
        const auto more = propertyIndexes(associations, id);
        indexes.insert(indexes.end(), more.begin(), more.end());
    }
    std::vector<Box> properties;
    for (const std::size_t index : indexes) {
        if (index >= 1 && index <= _properties.size()) {
            properties.push_back(_properties[index - 1]);
        }
    }
    return properties;
}

Data HeifMeta::content(std::uint32_t id, const Data& file) const {
    auto location = LocationList(_locations).location(id);
    if (!location) {
        return {};
    }
    const bool isInFile = location->origin == ItemLocation::Origin::File;
    const auto ownOffset = _ownBytes.empty() ? 0 : static_cast<std::size_t>(_ownBytes.data() - file.data());
    const Data origin = isInFile ? file : file.slice(ownOffset, _ownBytes.size());
    for (auto& extent : location->extents) {
        extent.length = extent.length == 0 ? origin.size() : extent.length;
    }
    if (location->extents.size() == 1) {
        const auto& extent = location->extents.front();
        return origin.slice(extent.offset, extent.length);
    }
    return joinedExtents(location->extents, origin);
}

} // namespace exifcard
