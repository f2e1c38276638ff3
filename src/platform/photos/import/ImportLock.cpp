#include "platform/photos/import/ImportLock.h"

#include "platform/foundation/FilePaths.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>

namespace exifcard {

std::optional<ImportLock> ImportLock::take(const std::string& folder, const std::function<void()>& onWait) {
    if (!makeFolder(folder)) {
        return std::nullopt;
    }
    const std::string path = folder + "/import.lock";
    FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.isOpen()) {
        return std::nullopt;
    }
    if (flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
        return ImportLock(std::move(file));
    }
    onWait();
    while (flock(file.number(), LOCK_EX) != 0) {
        if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return ImportLock(std::move(file));
}

} // namespace exifcard
