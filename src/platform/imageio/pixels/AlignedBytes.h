#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace exifcard {

/// Uninitialized memory for the scaler's vector instructions. Null where none is to be had.
class AlignedBytes {
public:
    static constexpr std::size_t kAlignment = 64;

    AlignedBytes() = default;
    explicit AlignedBytes(std::size_t size)
        : _bytes(
              static_cast<std::uint8_t*>(::operator new(size, std::align_val_t(kAlignment), std::nothrow))) {}

    std::uint8_t* get() const { return _bytes.get(); }

    /// Bytes from one row to the next, so that every row is aligned.
    static std::size_t stride(std::size_t width) {
        return (width + kAlignment - 1) / kAlignment * kAlignment;
    }

private:
    struct Delete {
        void operator()(std::uint8_t* bytes) const { ::operator delete(bytes, std::align_val_t(kAlignment)); }
    };
    std::unique_ptr<std::uint8_t, Delete> _bytes;
};

} // namespace exifcard
