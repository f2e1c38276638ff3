#pragma once

#include <cstddef>
#include <memory>

namespace exifcard {

/// Addresses beside each other for some files, which are given back to the system together: taking a file out
/// of a program's memory stops all its other threads, and where several threads read thousands of files each
/// of them would wait for the others most of the time.
class MappingBatch {
public:
    /// While it lives, files that this thread maps come into batches. A file stays mapped until the
    /// others of its batch are dropped too, or shortly after the end of this.
    class Use {
    public:
        Use();
        ~Use();
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
    };

    /// The batch in which the next file of that size is to be mapped, by `map`. Null outside of any use and
    /// for a large file.
    static std::shared_ptr<MappingBatch> withRoomFor(std::size_t size);

    ~MappingBatch();
    MappingBatch(const MappingBatch&) = delete;
    MappingBatch& operator=(const MappingBatch&) = delete;

    /// @param file  Mapped for reading.
    /// @return Null when the system refuses. The bytes are there as long as the batch is.
    void* map(int file, std::size_t size);

private:
    explicit MappingBatch(std::byte* begin) : _begin(begin) {}
    static std::shared_ptr<MappingBatch> reserved();

    std::byte* _begin;
    // For the thread of the use.
    std::size_t _used = 0; ///< Bytes, in whole pages.
    std::size_t _files = 0;
};

} // namespace exifcard
