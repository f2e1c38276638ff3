#pragma once

#include "platform/imageio/ByteView.h"

#include <cstdint>
#include <optional>
#include <span>

namespace exifcard {

/// The element types of a TIFF entry, with the standard's numbers.
enum class TiffType : std::uint16_t {
    Byte = 1,
    Ascii,
    Short,
    Long,
    Rational,
    SignedByte,
    Undefined,
    SignedShort,
    SignedLong,
    SignedRational,
    Float,
    Double,
    Directory,
    Utf8 = 129,
};

/// One tag of a directory with its value as it lies in the file.
struct TiffEntry {
    std::uint16_t tag = 0;
    TiffType type = TiffType::Undefined;
    std::uint32_t count = 0;             ///< Elements; all of them lie in `bytes`.
    std::span<const std::uint8_t> bytes; ///< Valid while the file's bytes are.
    ByteOrder order = ByteOrder::Little;
};

/// One directory of a TIFF structure, read in place.
class TiffDirectory {
public:
    /// The directory at `offset`; one that runs beyond the end keeps the entries that lie inside.
    TiffDirectory(ByteView bytes, std::uint32_t offset);

    std::uint32_t count() const { return _count; }
    /// Nothing for an entry of an unknown type, without elements, or whose value does not lie inside.
    std::optional<TiffEntry> entryAt(std::uint32_t index) const;
    std::optional<TiffEntry> find(std::uint16_t tag) const;
    /// The number under `tag`, or nothing when the directory has no such integer.
    std::optional<std::uint32_t> numberFor(std::uint16_t tag) const;
    /// Where the next directory of the chain begins; 0 for the last.
    std::uint32_t nextDirectory() const;

private:
    ByteView _bytes;
    std::size_t _firstEntry;
    std::uint32_t _count = 0;
};

/// The structure in which Exif data, TIFF files and most raw files are kept.
class TiffBlock {
public:
    /// @return Nothing for bytes without a TIFF header. Headers of raw files count as such.
    static std::optional<TiffBlock> fromBytes(std::span<const std::uint8_t> bytes);

    const ByteView& view() const { return _view; }
    TiffDirectory directoryAt(std::uint32_t offset) const { return {_view, offset}; }
    std::uint32_t firstDirectoryOffset() const { return _firstDirectory; }
    TiffDirectory firstDirectory() const { return directoryAt(_firstDirectory); }

private:
    TiffBlock(ByteView view, std::uint32_t firstDirectory) : _view(view), _firstDirectory(firstDirectory) {}

    ByteView _view;
    std::uint32_t _firstDirectory;
};

} // namespace exifcard
