#include "platform/foundation/DefaultsFile.h"

#include "platform/foundation/Dictionary.h"
#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <mutex>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace exifcard {
namespace {

constexpr std::int64_t kNanosecondsInSecond = 1'000'000'000;
/// Who has so many unreadable files of one name does not look at them.
constexpr int kMostKeptAside = 100;

/// Holds the lock of the file at `path`, among threads and programs, while it lives.
class FileLock {
public:
    explicit FileLock(const std::string& path)
        : _file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        while (_file.isOpen() && flock(_file.number(), LOCK_EX) != 0) {
            if (errno != EINTR) {
                _file = FileDescriptor();
            }
        }
    }

    bool isHeld() const { return _file.isOpen(); }

private:
    FileDescriptor _file; // Closing it lets the lock go.
};

/// Where the file really lies: some people keep their settings elsewhere behind a link.
std::string linkedFile(const std::string& path) {
    std::error_code error;
    auto linked = std::filesystem::canonical(path, error);
    return error ? path : linked.string();
}

bool haveTheirValues(const Dictionary& values, const std::vector<propertylist::Change>& changes) {
    return std::ranges::all_of(changes,
        [&values](const auto& change) { return values.objectForKey(change.first) == change.second; });
}

} // namespace

DefaultsFile::Identity DefaultsFile::identity() const {
    struct stat status = {};
    if (stat(_path.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino, status.st_size,
        status.st_mtim.tv_sec * kNanosecondsInSecond + status.st_mtim.tv_nsec};
}

DefaultsFile::SnapshotPtr DefaultsFile::read() const {
    static auto& mutex = *new std::mutex();
    static auto& latest = *new std::map<std::string, SnapshotPtr>(); // By path; guarded by mutex.
    const auto now = identity(); // Before reading: a file replaced meanwhile is then read once more.
    const std::lock_guard lock(mutex);
    SnapshotPtr& snapshot = latest[_path];
    if (!snapshot || !(snapshot->identity == now)) {
        snapshot = readAnew(now);
    }
    return snapshot;
}

DefaultsFile::SnapshotPtr DefaultsFile::readAnew(const Identity& identity) const {
    Snapshot snapshot;
    snapshot.values = Dictionary::make();
    snapshot.identity = identity;
    if (identity == Identity()) {
        return std::make_shared<const Snapshot>(std::move(snapshot));
    }
    const auto file = Data::mappedFile(_path);
    const auto value = file ? propertylist::read(*file) : std::nullopt;
    if (value && value->dictionaryView() != nullptr && !file->wasCutShort()) {
        snapshot.values = value->dictionary();
        snapshot.bytes = Data::fromText(file->text()); // A copy: others may write to the file itself.
    } else {
        snapshot.isUnreadable = true;
    }
    return std::make_shared<const Snapshot>(std::move(snapshot));
}

DefaultsFile::SnapshotPtr DefaultsFile::change(const std::vector<propertylist::Change>& changes) const {
    if (!makeFolder(std::filesystem::path(_path).parent_path())) {
        return nullptr;
    }
    const FileLock lock(_path + ".lock");
    if (!lock.isHeld()) {
        return nullptr;
    }
    auto current = read();
    if (haveTheirValues(*current->values, changes)) {
        return current;
    }
    const auto bytes = propertylist::withChanges(current->bytes, changes);
    if (bytes == current->bytes) {
        return current; // A float, say, which reads back as a double.
    }
    const bool mayWrite = bytes && (!current->isUnreadable || keepAside());
    const std::string target = linkedFile(_path);
    return mayWrite && writeFileAtomically(target, *bytes, target + ".new") ? read() : nullptr;
}

/// Gives the unreadable file a second name, so that the first one is never missing.
bool DefaultsFile::keepAside() const {
    for (int number = 1; number <= kMostKeptAside; ++number) {
        const std::string other = _path + ".unreadable-" + std::to_string(number);
        const bool isKept =
            link(_path.c_str(), other.c_str()) == 0 ||
            (errno != EEXIST && // No such names here, or not for this file: move it.
                renameat2(AT_FDCWD, _path.c_str(), AT_FDCWD, other.c_str(), RENAME_NOREPLACE) == 0);
        if (isKept) {
            errorLog(_path + " was no property list; it is kept as " + other);
            return true;
        }
    }
    return false;
}

} // namespace exifcard
