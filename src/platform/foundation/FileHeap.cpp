#include "platform/foundation/FileHeap.h"

#include <malloc.h>

namespace exifcard {

void keepMemoryBetweenFiles() {
    constexpr int kMebibyte = 1 << 20;
    mallopt(M_TRIM_THRESHOLD, 16 * kMebibyte);
    // As large ones as decoded pictures go back at once. Said here, as the setting above ends the library's
    // own guess.
    mallopt(M_MMAP_THRESHOLD, kMebibyte);
}

} // namespace exifcard
