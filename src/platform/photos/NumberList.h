#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace exifcard {

/// A long list of row numbers. It grows by pieces, so that it never takes more than what it holds.
class NumberList {
public:
    void append(std::int64_t number) {
        if (_count % kPiece == 0) {
            _pieces.push_back(std::make_unique<Piece>());
        }
        (*_pieces.back())[_count % kPiece] = number;
        ++_count;
    }
    std::int64_t operator[](std::size_t index) const { return (*_pieces[index / kPiece])[index % kPiece]; }
    std::size_t count() const { return _count; }

private:
    static constexpr std::size_t kPiece = 512;
    using Piece = std::array<std::int64_t, kPiece>;

    std::vector<std::unique_ptr<Piece>> _pieces;
    std::size_t _count = 0;
};

} // namespace exifcard
