#include "platform/foundation/FilePaths.h"

#include "platform/foundation/FileDescriptor.h"

#include <pwd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnersFile = 0600;
constexpr mode_t kOwnersFolder = 0700;

std::string environmentValue(const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing sets the environment while threads run.
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string homeFolder() {
    if (auto home = environmentValue("HOME"); !home.empty()) {
        return home;
    }
    std::array<char, 4096> buffer = {};
    passwd entry = {};
    passwd* found = nullptr;
    getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? found->pw_dir : "/";
}

/// The XDG rule: a relative path in the variable is ignored.
std::string userFolder(const char* variable, std::string_view belowHome) {
    fs::path base = environmentValue(variable);
    if (!base.is_absolute()) {
        base = fs::path(homeFolder()) / belowHome;
    }
    return base / "exifcard";
}

fs::path executableFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

/// The first of the paths that is there, relative ones seen from the program.
std::string firstExisting(const std::vector<fs::path>& candidates) {
    const auto folder = executableFolder();
    for (const auto& candidate : candidates) {
        std::error_code error;
        if (auto path = (folder / candidate).lexically_normal(); fs::is_regular_file(path, error)) {
            return path;
        }
    }
    return {};
}

bool writeAll(int file, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const auto written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

/// Makes a rename last: the entry itself is data of its folder.
void syncFolder(const fs::path& folder) {
    const FileDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen()) {
        fsync(opened.number());
    }
}

/// Renames unless there is a file of the new name.
int renameToNew(const char* from, const char* to) {
    const int result = renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
    const bool isUnsupported =
        result != 0 && errno == EINVAL; // Some file systems cannot check while renaming.
    return isUnsupported && access(to, F_OK) != 0 ? rename(from, to) : result;
}

struct Replacement {
    int (*renaming)(const char* from, const char* to) = std::rename;
    Durability durability = Durability::Lasting;
};

bool replaceFile(const fs::path& path,
    const Data& bytes,
    const FileDescriptor& file,
    const char* temporaryPath,
    const Replacement& replacement) {
    if (!file.isOpen()) {
        return false;
    }
    const bool isLasting = replacement.durability == Durability::Lasting;
    const bool isReplaced = writeAll(file.number(), bytes.bytes()) &&
                            (!isLasting || fsync(file.number()) == 0) &&
                            replacement.renaming(temporaryPath, path.c_str()) == 0;
    if (!isReplaced) {
        unlink(temporaryPath);
        return false;
    }
    if (isLasting) {
        syncFolder(path.parent_path());
    }
    return true;
}

/// The file itself where `path` is a link to it.
fs::path linkedFile(const std::string& path) {
    std::error_code error;
    auto linked = fs::canonical(path, error);
    return error ? fs::path(path) : linked;
}

} // namespace

std::string configurationFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

std::string dataFolder() {
    return userFolder("XDG_DATA_HOME", ".local/share");
}

std::string cacheFolder() {
    return userFolder("XDG_CACHE_HOME", ".cache");
}

std::string temporaryDirectory() {
    std::string folder = environmentValue("TMPDIR");
    if (folder.empty()) {
        folder = "/tmp";
    }
    return folder.ends_with('/') ? folder : folder + '/';
}

std::string resourcePath(std::string_view name) {
    return firstExisting({fs::path("share/exifcard") / name, fs::path("../share/exifcard") / name});
}

std::string modulePath(std::string_view name) {
    const auto file = std::string(name) + ".so";
    return firstExisting(
        {fs::path("lib/exifcard") / file, fs::path("..") / EXIFCARD_LIBRARY_FOLDER / "exifcard" / file});
}

bool makeFolder(const std::string& path) {
    fs::path made;
    for (const auto& part : fs::path(path)) {
        made /= part;
        mkdir(made.c_str(), kOwnersFolder); // Fails where the folder is there; the last one decides.
    }
    std::error_code error;
    return fs::is_directory(path, error);
}

bool writeFileAtomically(const std::string& path, const Data& bytes, Durability durability) {
    const auto target = linkedFile(path);
    std::string temporaryPath = target.string() + ".XXXXXX";
    const FileDescriptor file(mkostemp(temporaryPath.data(), O_CLOEXEC)); // Makes it with mode 0600.
    return replaceFile(target, bytes, file, temporaryPath.c_str(), {.durability = durability});
}

bool writeFileAtomically(const std::string& path, const Data& bytes, const std::string& temporaryPath) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW;
    const FileDescriptor file(open(temporaryPath.c_str(), kFlags, kOwnersFile));
    return replaceFile(linkedFile(path), bytes, file, temporaryPath.c_str(), {});
}

bool moveIntoPlace(const std::string& finishedPath, const std::string& path) {
    const FileDescriptor file(open(finishedPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    const bool isMoved =
        file.isOpen() && fsync(file.number()) == 0 && std::rename(finishedPath.c_str(), path.c_str()) == 0;
    if (isMoved) {
        syncFolder(fs::path(path).parent_path());
    }
    return isMoved;
}

bool writeNewFile(const std::string& path, const Data& bytes, Durability durability) {
    std::string temporaryPath = path + ".XXXXXX";
    const FileDescriptor file(mkostemp(temporaryPath.data(), O_CLOEXEC));
    return replaceFile(
        path, bytes, file, temporaryPath.c_str(), {.renaming = renameToNew, .durability = durability});
}

} // namespace exifcard
