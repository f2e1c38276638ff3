#pragma once

#include "platform/foundation/Data.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace exifcard {

/// `number` as `byteCount` bytes, the highest first.
inline std::string bigEndian(std::uint64_t number, std::size_t byteCount) {
    std::string bytes(byteCount, '\0');
    for (std::size_t index = byteCount; index > 0; --index, number >>= 8U) {
        bytes[index - 1] = static_cast<char>(number & 0xFFU);
    }
    return bytes;
}

inline std::string box(const std::string& type, const std::string& payload) {
    return bigEndian(payload.size() + 8, 4) + type + payload;
}

/// A box that begins with version and flags.
inline std::string listBox(
    const std::string& type, const std::string& payload, int version = 0, int flags = 0) {
    const auto head =
        bigEndian(static_cast<std::uint64_t>(version), 1) + bigEndian(static_cast<std::uint64_t>(flags), 3);
    return box(type, head + payload);
}

/// A HEIF file of a few hundred bytes, put together as ISO/IEC 23008-12 lays it out.
struct HeifFile {
    struct Item {
        std::uint64_t id = 1;
        std::string type = "hvc1";
        std::vector<int> properties; ///< Counted from 1.
        bool isHidden = false;
    };
    /// How "iloc" writes its numbers, and where the bytes lie.
    // NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): the order is that of the list.
    struct Layout {
        int version = 0;
        std::size_t offsetSize = 4;
        std::size_t lengthSize = 4;
        std::size_t baseSize = 0;
        std::size_t indexSize = 0;
        unsigned method = 0;        ///< 1: in "idat", otherwise behind the "meta" box.
        std::size_t pieceCount = 1; ///< The content is cut into that many extents.
    };

    std::vector<Item> items = {{}};
    std::vector<std::string> properties;
    std::string references; ///< Boxes of "iref".
    std::uint64_t primaryId = 1;
    std::uint64_t contentId = 2; ///< The item that has `content`.
    std::string content;
    Layout layout;
    bool hasLongIds = false;

    std::string bytes() const {
        // The bytes' place depends on the size of what stands before them: lay it out twice.
        const std::string draft = upToContent(0);
        return upToContent(draft.size()) + (layout.method == 1 ? "" : content);
    }
    Data data() const { return Data::fromText(bytes()); }

private:
    std::string id(std::uint64_t number) const { return bigEndian(number, hasLongIds ? 4 : 2); }

    std::string upToContent(std::size_t contentOffset) const {
        const int version = hasLongIds ? 1 : 0;
        std::string lists = listBox("pitm", id(primaryId), version) + itemInfo() + itemProperties();
        lists += listBox("iref", references, version);
        lists += locations(layout.method == 1 ? 0 : contentOffset);
        lists += layout.method == 1 ? box("idat", content) : "";
        return box("ftyp", "heic" + bigEndian(0, 4)) + listBox("meta", lists);
    }

    std::string itemInfo() const {
        std::string entries;
        for (const Item& item : items) {
            std::string entry = id(item.id) + bigEndian(0, 2) + item.type;
            entry += bigEndian(0, 1); // Without a name.
            entry += item.type == "mime" ? std::string("application/rdf+xml\0", 20) : "";
            entries += listBox("infe", entry, hasLongIds ? 3 : 2, item.isHidden ? 1 : 0);
        }
        return listBox("iinf", bigEndian(items.size(), 2) + entries);
    }

    std::string itemProperties() const {
        std::string container;
        for (const std::string& property : properties) {
            container += property;
        }
        std::string entries = bigEndian(items.size(), 4);
        for (const Item& item : items) {
            entries += id(item.id) + bigEndian(item.properties.size(), 1);
            for (const int index : item.properties) {
                // Long identifiers go with long indexes; the highest bit says that a property is essential.
                entries += bigEndian(
                    (hasLongIds ? 0x8000U : 0x80U) | static_cast<unsigned>(index), hasLongIds ? 2 : 1);
            }
        }
        const int version = hasLongIds ? 1 : 0;
        return box("iprp", box("ipco", container) + listBox("ipma", entries, version, version));
    }

    std::string locations(std::size_t contentOffset) const {
        const std::size_t idSize = layout.version == 2 ? 4 : 2;
        std::string list = bigEndian(layout.offsetSize << 12U | layout.lengthSize << 8U |
                                         layout.baseSize << 4U | (layout.version == 0 ? 0 : layout.indexSize),
            2);
        list += bigEndian(2, idSize);
        list += location(99, contentOffset, ""); // An item before the one that is wanted.
        list += location(contentId, contentOffset, content);
        return listBox("iloc", list, layout.version);
    }

    std::string location(std::uint64_t itemId, std::size_t offset, const std::string& bytes) const {
        const std::size_t base = layout.baseSize > 0 ? offset : 0;
        std::string entry = bigEndian(itemId, layout.version == 2 ? 4 : 2);
        entry += layout.version == 0 ? "" : bigEndian(layout.method, 2);
        entry += bigEndian(0, 2) + bigEndian(base, layout.baseSize) + bigEndian(layout.pieceCount, 2);
        const std::size_t pieceSize = bytes.size() / layout.pieceCount;
        for (std::size_t piece = 0; piece < layout.pieceCount; ++piece) {
            const std::size_t begin = piece * pieceSize;
            const bool isLast = piece + 1 == layout.pieceCount;
            entry += layout.version == 0 ? "" : bigEndian(piece + 1, layout.indexSize);
            entry += bigEndian(offset - base + begin, layout.offsetSize);
            entry += bigEndian(isLast ? bytes.size() - begin : pieceSize, layout.lengthSize);
        }
        return entry;
    }
};

} // namespace exifcard
