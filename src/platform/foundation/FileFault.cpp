#include "platform/foundation/FileFault.h"

#include <cerrno>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {
namespace {

struct KindOfFile {
    mode_t kind;
    const char* cause;
};

constexpr KindOfFile kNoRegularFiles[] = {
    {S_IFDIR, "is a folder"},
    {S_IFIFO, "is a pipe"},
    {S_IFSOCK, "is a socket"},
    {S_IFCHR, "is a device"},
    {S_IFBLK, "is a device"},
};

std::string causeOfError(int error) {
    return error == ENOENT ? "no such file" : std::generic_category().message(error);
}

} // namespace

std::string faultOfFile(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return causeOfError(errno);
    }
    for (const KindOfFile& noFile : kNoRegularFiles) {
        if ((status.st_mode & S_IFMT) == noFile.kind) {
            return noFile.cause;
        }
    }
    return ::access(path.c_str(), R_OK) == 0 ? "" : causeOfError(errno);
}

} // namespace exifcard
