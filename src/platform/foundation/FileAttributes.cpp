#include "platform/foundation/FileAttributes.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace exifcard {

std::optional<Date> creationDateOfFile(const std::string& path) {
    struct statx attributes {};
    if (statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME | STATX_MTIME, &attributes) != 0) {
        return std::nullopt;
    }
    const bool hasBirth = (attributes.stx_mask & STATX_BTIME) != 0 && attributes.stx_btime.tv_sec > 0;
    const auto& time = hasBirth ? attributes.stx_btime : attributes.stx_mtime;
    return Date{static_cast<double>(time.tv_sec) + time.tv_nsec * 1e-9};
}

} // namespace exifcard
