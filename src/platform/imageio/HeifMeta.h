#pragma once

#include "platform/foundation/Data.h"
#include "platform/imageio/IsoBoxes.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace exifcard {

/// A picture, a tile of one, or a block of metadata.
struct HeifItem {
    std::uint32_t id = 0;
    BoxType type = 0;             ///< "hvc1", "grid", "Exif", "mime"…
    std::string_view contentType; ///< Of a "mime" item; empty otherwise.
    bool isHidden = false;
};

struct HeifReference {
    BoxType type = 0; ///< "thmb", "auxl", "dimg", "cdsc"…
    std::uint32_t from = 0;
    std::uint32_t to = 0;
};

/// The lists of a HEIF file's "meta" box. Holds views into the file's bytes,
/// which must outlive it.
class HeifMeta {
public:
    /// @param payload  What the "meta" box holds, untrusted.
    /// @return Nothing when a list is broken or longer than any camera writes,
    ///         or the primary item is missing.
    static std::optional<HeifMeta> read(ByteSpan payload);

    const HeifItem& primary() const { return *item(_primaryId); }
    /// Null when there is none.
    const HeifItem* item(std::uint32_t id) const;
    /// In the order of their ids.
    const std::vector<HeifItem>& items() const { return _items; }
    const std::vector<HeifReference>& references() const { return _references; }

    /// The properties of an item in the order in which they are to be applied.
    std::vector<Box> properties(std::uint32_t id) const;

    /// The bytes of an item, uncopied where they lie in one piece; fewer when the
    /// file ends too early, and none when it does not tell where they are.
    /// @param file  The bytes of the whole file.
    Data content(std::uint32_t id, const Data& file) const;

private:
    // Each answers false for a list that is broken or too long.
    bool takeList(const Box& list);
    bool readPrimaryId(ByteSpan primaryItem);
    bool readItems(ByteSpan itemInfo);
    bool readReferences(ByteSpan itemReferences);
    bool readProperties(ByteSpan itemProperties);

    std::uint32_t _primaryId = 0;
    std::vector<HeifItem> _items;
    std::vector<HeifReference> _references;
    std::vector<Box> _properties;
    std::vector<ByteSpan> _associations; // Payloads of "ipma".
    ByteSpan _locations;                 // Payload of "iloc".
    ByteSpan _ownBytes;                  // Payload of "idat".
};

} // namespace exifcard
