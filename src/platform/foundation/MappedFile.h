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

/// A file mapped for reading. A page that lies beyond the end of a file which
/// was cut short after it was mapped reads as zeros and leaves a mark, instead
/// of ending the program.
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
    MappedFile(std::span<const std::uint8_t> bytes, int slot, std::shared_ptr<const MappingBatch> batch);

    std::span<const std::uint8_t> _bytes;
    int _slot = -1; // In the table that the fault handler reads; -1 for an empty file.
    std::shared_ptr<const MappingBatch> _batch; // Of which the bytes are; null for a mapping of its own.
};

} // namespace exifcard
