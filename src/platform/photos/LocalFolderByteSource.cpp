#include "platform/photos/LocalFolderByteSource.h"

#include <sys/stat.h>

namespace exifcard {

std::optional<std::string> LocalFolderByteSource::localFile(const AssetFile& file) const {
    std::string path = file.root + '/' + file.path;
    struct stat status = {};
    const bool isFile = ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? std::optional(std::move(path)) : std::nullopt;
}

bool LocalFolderByteSource::isElsewhere(const AssetFile& /*file*/) const {
    return false;
}

std::optional<PHError> LocalFolderByteSource::bring(const AssetFile& file, const Progress& /*progress*/) {
    if (localFile(file)) {
        return std::nullopt;
    }
    return PHError{PHErrorCode::MissingResource, "The file is no longer in its folder."};
}

} // namespace exifcard
