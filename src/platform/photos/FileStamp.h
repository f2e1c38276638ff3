#pragma once

#include <cstdint>

namespace exifcard {

/// What changes when a file does. A file whose stamp is as it was need not be opened.
struct FileStamp {
    std::int64_t sizeInBytes = 0;
    std::int64_t modified = 0; ///< Nanoseconds since 1970, as are all times here.
    std::int64_t changed = 0;  ///< When content, name or rights were last changed.
    std::int64_t inode = 0;
    bool operator==(const FileStamp&) const = default;
};

} // namespace exifcard
