#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace exifcard {

enum class ByteOrder { Little, Big };

/// Untrusted bytes with numbers in them. Every answer is bounded by the bytes that there are.
class ByteView {
public:
    explicit ByteView(std::span<const std::uint8_t> bytes, ByteOrder order = ByteOrder::Big)
        : _bytes(bytes)
        , _order(order) {}

    std::span<const std::uint8_t> bytes() const { return _bytes; }
    std::size_t size() const { return _bytes.size(); }
    ByteOrder order() const { return _order; }

    /// The unsigned number at `offset`, or nothing when it does not lie wholly inside.
    std::optional<std::uint8_t> byteAt(std::size_t offset) const { return numberAt<std::uint8_t>(offset); }
    std::optional<std::uint16_t> shortAt(std::size_t offset) const { return numberAt<std::uint16_t>(offset); }
    std::optional<std::uint32_t> longAt(std::size_t offset) const { return numberAt<std::uint32_t>(offset); }

    /// The part of `length` bytes at `offset`; empty when it does not lie wholly inside.
    std::span<const std::uint8_t> part(std::size_t offset, std::size_t length) const {
        return contains(offset, length) ? _bytes.subspan(offset, length) : std::span<const std::uint8_t>();
    }
    /// Whether exactly these characters stand at `offset`.
    bool hasTextAt(std::size_t offset, std::string_view text) const {
        return contains(offset, text.size()) &&
               std::memcmp(_bytes.data() + offset, text.data(), text.size()) == 0;
    }

    /// The number at the front of at least sizeof(Number) bytes.
    template<typename Number>
    static Number load(const std::uint8_t* bytes, ByteOrder order) {
        std::uint64_t number = 0;
        for (std::size_t index = 0; index < sizeof(Number); ++index) {
            const std::size_t place = order == ByteOrder::Big ? index : sizeof(Number) - 1 - index;
            number = number << 8U | bytes[place];
        }
        return static_cast<Number>(number);
    }

private:
    bool contains(std::size_t offset, std::size_t length) const {
        return offset <= _bytes.size() && length <= _bytes.size() - offset;
    }
    template<typename Number>
    std::optional<Number> numberAt(std::size_t offset) const {
        return contains(offset, sizeof(Number)) ? std::optional(load<Number>(_bytes.data() + offset, _order))
                                                : std::nullopt;
    }

    std::span<const std::uint8_t> _bytes;
    ByteOrder _order;
};

/// The bytes as characters.
inline std::string_view textView(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace exifcard
