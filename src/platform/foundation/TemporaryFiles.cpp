#include "platform/foundation/TemporaryFiles.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {

bool isWritableFile(const std::string& path) {
    return access(path.c_str(), W_OK) == 0;
}

bool isDeletableFile(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return access(path.c_str(), F_OK) == 0 && isWritableFile(folder.empty() ? "." : folder);
}

std::optional<std::string> makeOneFolder(const std::string& path) {
    constexpr mode_t kOwnersFolder = 0700;
    std::error_code error;
    if (mkdir(path.c_str(), kOwnersFolder) == 0 || std::filesystem::exists(path, error)) {
        return std::nullopt;
    }
    return lastFileError();
}

std::string lastFileError() {
    return std::generic_category().message(errno);
}

} // namespace exifcard
