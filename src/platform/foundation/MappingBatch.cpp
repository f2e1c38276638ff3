#include "platform/foundation/MappingBatch.h"

#include <sys/mman.h>
#include <unistd.h>

namespace exifcard {
namespace {

/// Addresses cost nothing. Some fifty photos.
constexpr std::size_t kBatchSize = std::size_t(256) << 20U;
/// The system lets a program map some 65,000 files in all.
constexpr std::size_t kMostFiles = 16;
/// A larger file is not worth the room.
constexpr std::size_t kLargestFile = kBatchSize / 8;

struct ThreadsBatch {
    bool isInUse = false;
    std::shared_ptr<MappingBatch> batch;
};
thread_local ThreadsBatch threadsBatch;

std::size_t wholePages(std::size_t size) {
    static const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return (size + pageSize - 1) / pageSize * pageSize;
}

} // namespace

MappingBatch::Use::Use() {
    threadsBatch.isInUse = true;
}

MappingBatch::Use::~Use() {
    threadsBatch = {};
}

std::shared_ptr<MappingBatch> MappingBatch::withRoomFor(std::size_t size) {
    if (!threadsBatch.isInUse || size > kLargestFile) {
        return nullptr;
    }
    auto& batch = threadsBatch.batch;
    if (!batch || batch->_files == kMostFiles || wholePages(size) > kBatchSize - batch->_used) {
        batch = reserved();
    }
    return batch;
}

std::shared_ptr<MappingBatch> MappingBatch::reserved() {
    void* const begin =
        mmap(nullptr, kBatchSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return begin != MAP_FAILED
               ? std::shared_ptr<MappingBatch>(new MappingBatch(static_cast<std::byte*>(begin)))
               : nullptr;
}

MappingBatch::~MappingBatch() {
    munmap(_begin, kBatchSize);
}

void* MappingBatch::map(int file, std::size_t size) {
    void* const address = mmap(_begin + _used, size, PROT_READ, MAP_PRIVATE | MAP_FIXED, file, 0);
    if (address == MAP_FAILED) {
        return nullptr;
    }
    _used += wholePages(size);
    ++_files;
    return address;
}

} // namespace exifcard
