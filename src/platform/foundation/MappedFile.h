#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace exifcard {

class MappingBatch;

/// What of a file will be read.
enum class Reading {
    Whole,
    Ends, ///< Its beginning and its end, which are fetched at once; of the rest no more than is touched.
};

/// A file's bytes, mapped for reading, or copied where they are few. What lies beyond the end of a file which
/// was cut short after it was opened reads as zeros and leaves a mark, instead of ending the program; a copy
/// stays as it was read.
class MappedFile {
public:
    /// @return Null for what cannot be opened or is no regular file.
    static std::unique_ptr<MappedFile> open(const std::string& path, Reading reading);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::span<const std::uint8_t> bytes() const { return _bytes; }
    bool wasCutShort() const;

private:
    MappedFile() = default;
    void copy(int file, std::size_t size);
    bool map(int file, std::size_t size, Reading reading);

    std::span<const std::uint8_t> _bytes;
    std::unique_ptr<std::uint8_t[]> _copy; // Null for a mapping.
    bool _isCopyCutShort = false;
    int _slot = -1;                       // In the table that the fault handler reads; -1 for a copy.
    std::shared_ptr<MappingBatch> _batch; // Of which the mapping is; null for one of its own.
};

} // namespace exifcard
