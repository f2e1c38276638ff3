#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace exifcard {

using ByteSpan = std::span<const std::uint8_t>;

/// The four characters that tell what a box of an ISO base media file holds.
using BoxType = std::uint32_t;

constexpr BoxType boxType(const char (&name)[5]) {
    BoxType type = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        type = (type << 8U) | static_cast<std::uint8_t>(name[index]);
    }
    return type;
}

/// Takes big-endian numbers and texts off the front of untrusted bytes. Where
/// they end too early it answers 0 or an empty text and is broken from then on.
class ByteCursor {
public:
    explicit ByteCursor(ByteSpan bytes) : _rest(bytes) {}

    /// @param byteCount  0 to 8; of no bytes the number is 0.
    std::uint64_t number(std::size_t byteCount);
    /// The text up to a zero byte, which is taken too.
    std::string_view text();
    void skip(std::size_t byteCount);

    ByteSpan rest() const { return _rest; }
    bool isBroken() const { return _isBroken; }

private:
    ByteSpan _rest;
    bool _isBroken = false;
};

struct Box {
    BoxType type = 0;
    ByteSpan
        payload; ///< What follows the box's header. Of a "uuid" box it begins with the 16 bytes of its name.
};

/// Goes over the boxes of a file or of a box, reading only their headers.
class BoxWalk {
public:
    explicit BoxWalk(ByteSpan boxes) : _rest(boxes) {}

    /// @return Nothing at the end, and where a box is larger than what holds it
    ///         or smaller than its own header, or stands behind too many others.
    std::optional<Box> next();

    /// Whether the walk ended at something else than the end.
    bool isBroken() const { return _isBroken; }

private:
    std::optional<Box> broken();

    ByteSpan _rest;
    std::size_t _count = 0;
    bool _isBroken = false;
};

/// The first box of that type.
std::optional<Box> firstBox(ByteSpan boxes, BoxType type);

} // namespace exifcard
