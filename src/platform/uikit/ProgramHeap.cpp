#include "platform/uikit/ProgramHeap.h"

#include <malloc.h>

#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace exifcard {
namespace {

constexpr int kMebibyte = 1024 * 1024;
/// The window's own picture at twice the scale, and what the first page of a list takes.
constexpr int kFirstBytes = 16 * kMebibyte;
constexpr std::uintptr_t kLargePage = 2 * kMebibyte;
/// Smaller than a tile's picture. The C library would raise it with the first picture that is freed.
constexpr int kLeastMappedBytes = 128 * 1024;

} // namespace

void prepareHeap() {
    const auto start = reinterpret_cast<std::uintptr_t>(sbrk(0));
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, kFirstBytes);
    mallopt(M_TRIM_THRESHOLD, 2 * kFirstBytes);
    mallopt(M_TOP_PAD, kFirstBytes);
    void* volatile block = std::malloc(kMebibyte); // Does not fit, so the heap grows by that and the padding.
    std::free(block);
    mallopt(M_TOP_PAD, kMebibyte);
    const auto end = reinterpret_cast<std::uintptr_t>(sbrk(0));
    const std::uintptr_t first = (start + kLargePage - 1) / kLargePage * kLargePage;
    if (first < end) { // Another allocator does not take its memory from there.
        madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
    }
}

void keepPicturesOutOfHeap() {
    mallopt(M_MMAP_THRESHOLD, kLeastMappedBytes);
    mallopt(M_TRIM_THRESHOLD, 2 * kMebibyte);
}

} // namespace exifcard
