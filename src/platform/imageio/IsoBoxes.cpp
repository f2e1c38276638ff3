#include "platform/imageio/IsoBoxes.h"

#include <algorithm>

namespace exifcard {
namespace {

// A picture of 400 megapixels in tiles of 512 × 512 pixels lists some 1,600 items; nothing honest has more
// boxes side by side, and a file of empty boxes is not walked to its end.
constexpr std::size_t kMaximumBoxes = 8192;

constexpr std::size_t kHeaderSize = 8;
constexpr std::uint64_t kSizeIsRest = 0;
constexpr std::uint64_t kSizeFollowsType = 1;

} // namespace

std::uint64_t ByteCursor::number(std::size_t byteCount) {
    if (byteCount > _rest.size()) {
        skip(byteCount);
        return 0;
    }
    std::uint64_t number = 0;
    for (const std::uint8_t byte : _rest.first(byteCount)) {
        number = (number << 8U) | byte;
    }
    skip(byteCount);
    return number;
}

std::string_view ByteCursor::text() {
    const auto end = std::ranges::find(_rest, std::uint8_t(0));
    const auto length = static_cast<std::size_t>(end - _rest.begin());
    const std::string_view text(reinterpret_cast<const char*>(_rest.data()), length);
    skip(length + 1);
    return _isBroken ? std::string_view() : text;
}

void ByteCursor::skip(std::size_t byteCount) {
    _isBroken = _isBroken || byteCount > _rest.size();
    _rest = _rest.subspan(std::min(byteCount, _rest.size()));
}

std::optional<Box> BoxWalk::next() {
    // Some writers leave a few bytes behind the last box.
    if (_isBroken || _rest.size() < kHeaderSize) {
        return std::nullopt;
    }
    if (++_count > kMaximumBoxes) {
        return broken();
    }
    ByteCursor cursor(_rest);
    std::uint64_t size = cursor.number(4);
    const auto type = static_cast<BoxType>(cursor.number(4));
    if (size == kSizeFollowsType) {
        size = cursor.number(8);
    } else if (size == kSizeIsRest) {
        size = _rest.size();
    }
    const std::size_t headerSize = _rest.size() - cursor.rest().size();
    if (cursor.isBroken() || size < headerSize || size > _rest.size()) {
        return broken();
    }
    const Box box = {type, _rest.subspan(headerSize, size - headerSize)};
    _rest = _rest.subspan(size);
    return box;
}

std::optional<Box> BoxWalk::broken() {
    _isBroken = true;
    return std::nullopt;
}

std::optional<Box> firstBox(ByteSpan boxes, BoxType type) {
    BoxWalk walk(boxes);
    while (const auto box = walk.next()) {
        if (box->type == type) {
            return box;
        }
    }
    return std::nullopt;
}

} // namespace exifcard
