#include "platform/photos/import/FolderScan.h"

#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/FileFault.h"
#include "platform/foundation/TemporaryFiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace exifcard {
namespace {

/// Deeper than people nest; a path of this depth is near the longest that the system opens.
constexpr int kMostDepth = 256;

std::int64_t nanoseconds(const timespec& time) {
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    return time.tv_sec * kPerSecond + time.tv_nsec;
}

FileStamp stampOfStatus(const struct stat& status) {
    return {.sizeInBytes = status.st_size,
        .modified = nanoseconds(status.st_mtim),
        .changed = nanoseconds(status.st_ctim),
        .inode = static_cast<std::int64_t>(status.st_ino)};
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

std::optional<FileStamp> stampOfFile(const std::string& path) {
    struct stat status {};
    const bool isFile = lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? std::optional(stampOfStatus(status)) : std::nullopt;
}

bool isGone(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) == 0) {
        return !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
    }
    return errno == ENOENT || errno == ENOTDIR;
}

bool isFolderThere(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isMountPoint(const std::string& path) {
    struct statx status {};
    // A network drive that does not answer shall not hold up an import for this alone.
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    return statx(AT_FDCWD, path.c_str(), kFlags, STATX_TYPE, &status) == 0 &&
           (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

/// Reads the entries of one folder.
class FolderScan::Listing {
public:
    Listing(FolderScan& scan, const Pending& pending, FileDescriptor descriptor)
        : _scan(scan)
        , _pending(pending)
        , _descriptor(descriptor.number())
        , _folder(fdopendir(descriptor.number())) {
        if (_folder) {
            descriptor.release(); // The stream closes it.
        }
    }

    ScannedFolder read() {
        _found.isMountPoint = isMountPoint(_pending.path);
        while (const dirent* const entry = nextEntry()) {
            add(*entry);
        }
        std::ranges::sort(_found.files, {}, &ScannedFile::name);
        std::ranges::sort(_folders, std::greater()); // The first one is taken from the end.
        for (std::string& path : _folders) {
            _scan._pending.push_back({std::move(path), _pending.depth + 1});
        }
        return std::move(_found);
    }

private:
    const dirent* nextEntry() {
        errno = 0;
        const dirent* const entry = _folder ? readdir(_folder.get()) : nullptr;
        if (entry == nullptr && errno != 0) {
            failed(_pending.path, lastFileError());
        }
        return entry;
    }

    void add(const dirent& entry) {
        const std::string_view name(&entry.d_name[0]);
        if (name == "." || name == "..") {
            return;
        }
        _found.isEmpty = false;
        if (name.starts_with('.')) {
            return;
        }
        const FileKind kind = fileKindOfName(name);
        const bool mayBeFolder = entry.d_type == DT_DIR || entry.d_type == DT_UNKNOWN;
        if (entry.d_type != DT_LNK && (mayBeFolder || kind != FileKind::Other)) {
            addKnown(std::string(name), kind);
        }
    }

    void addKnown(std::string name, FileKind kind) {
        struct stat status {};
        if (fstatat(_descriptor, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno != ENOENT) { // Else it has just been taken away.
                failed(pathOf(name), lastFileError());
            }
        } else if (S_ISDIR(status.st_mode)) {
            _folders.push_back(pathOf(name));
        } else if (S_ISREG(status.st_mode) && kind != FileKind::Other) {
            _found.files.push_back({std::move(name), kind, stampOfStatus(status)});
        } else if (kind != FileKind::Other) {
            const std::string path = pathOf(name);
            _scan._onProblem({path, faultOfFile(path)});
        }
    }

    void failed(const std::string& path, const std::string& cause) {
        _found.isWhole = false;
        _scan._onProblem({path, cause});
    }

    std::string pathOf(std::string_view name) const { return fmt::format("{}/{}", _pending.path, name); }

    FolderScan& _scan;
    const Pending& _pending;
    int _descriptor;
    std::unique_ptr<DIR, CloseFolder> _folder;
    ScannedFolder _found{.path = _pending.path};
    std::vector<std::string> _folders;
};

FolderScan::FolderScan(std::string root, ProblemHandler onProblem) : _onProblem(std::move(onProblem)) {
    _pending.push_back({std::move(root)});
}

std::optional<ScannedFolder> FolderScan::next() {
    if (_pending.empty()) {
        return std::nullopt;
    }
    const Pending pending = std::move(_pending.back());
    _pending.pop_back();
    return scan(pending);
}

ScannedFolder FolderScan::scan(const Pending& pending) {
    const auto refused = [&](std::string cause) {
        _onProblem({pending.path, std::move(cause)});
        return ScannedFolder{.path = pending.path, .isWhole = false};
    };
    if (pending.depth > kMostDepth) {
        return refused("lies too deep");
    }
    FileDescriptor descriptor(
        open(pending.path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isOpen()) {
        return refused(lastFileError());
    }
    if (!isNew(descriptor.number())) {
        return refused("leads back to a folder that was read already");
    }
    if (_onFolder) {
        _onFolder(pending.path);
    }
    return Listing(*this, pending, std::move(descriptor)).read();
}

/// A folder that is mounted within itself would have no end.
bool FolderScan::isNew(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && _met.emplace(status.st_dev, status.st_ino).second;
}

} // namespace exifcard
