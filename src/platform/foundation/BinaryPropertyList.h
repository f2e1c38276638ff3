#pragma once

#include "platform/foundation/Value.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace exifcard::propertylist {

/// A property list in binary form, read where it lies: an object is decoded
/// when it is asked for, and no more of it than that.
///
/// Every offset and count is checked against the bytes; what lies outside
/// them, or has no form, is answered with nothing. Objects may refer to each
/// other in a circle: who follows references bounds the depth.
class BinaryPropertyList {
public:
    /// The upper half of an object's marker.
    enum class Kind : unsigned char {
        Simple = 0x0, ///< Nothing, false or true, by size 0, 8 and 9.
        Integer = 0x1,
        Real = 0x2,
        Date = 0x3,
        Data = 0x4,
        ASCII = 0x5,
        UTF16 = 0x6,
        Reference = 0x8, ///< Of a keyed archive, to one of its objects.
        Array = 0xa,
        Dictionary = 0xd,
    };

    struct Object {
        Kind kind = Kind::Simple;
        std::size_t size = 0;    ///< Bytes, UTF-16 units, entries, or the lower half of the marker, by kind.
        std::size_t content = 0; ///< Where the content begins.

        bool isText() const { return kind == Kind::ASCII || kind == Kind::UTF16; }
    };

    /// @param bytes  Must outlive this.
    explicit BinaryPropertyList(std::string_view bytes);

    /// How many objects there are, by the list's own word; 0 for what is no list.
    std::size_t count() const { return _count; }
    std::size_t root() const { return _root; }

    std::optional<Object> objectAt(std::size_t index) const;

    /// The number of the object that stands at a place of an array, or of a
    /// dictionary, which holds all keys and then all values.
    std::optional<std::size_t> elementAt(const Object& container, std::size_t place) const;

    /// The number in a reference of a keyed archive.
    std::optional<std::size_t> referenceIn(const Object& object) const;

    /// The bytes of data or of a text, as they stand; empty for another kind.
    std::string_view contentOf(const Object& object) const;

    /// The text, number, boolean, date or data; nothing for another kind.
    Value scalarOf(const Object& object) const;

private:
    std::optional<std::size_t> number(std::size_t position, std::size_t size) const;
    std::optional<Object> withSizeAfterMarker(Object object) const;
    Value numberOf(const Object& object) const;

    std::string_view _bytes;
    std::size_t _offsetSize = 0;
    std::size_t _referenceSize = 0;
    std::size_t _count = 0;
    std::size_t _root = 0;
    std::size_t _table = 0;
};

} // namespace exifcard::propertylist
