#include "platform/photos/import/FolderWatch.h"

#include "platform/photos/import/FolderScan.h"
#include "platform/photos/import/LibraryPlaces.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include <sys/inotify.h>

namespace exifcard {
namespace {

/// A change of content is told when the file is closed, so that no half of it is read.
constexpr std::uint32_t kChanges = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE |
                                   IN_ATTRIB | IN_MOVE_SELF | IN_ONLYDIR | IN_DONT_FOLLOW | IN_EXCL_UNLINK;
constexpr std::uint32_t kComings = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kGoings = IN_DELETE | IN_MOVED_FROM;
/// Of the folder above one that is not there; it may lie in a watched tree and then keeps its other events.
constexpr std::uint32_t kReturns = kComings | IN_MOVE_SELF | IN_ONLYDIR | IN_MASK_ADD;

/// What belongs together follows within this time; a change is to be seen within a second.
constexpr std::chrono::milliseconds kQuiet(100);
constexpr std::chrono::milliseconds kLongestCollection(400);

enum class Readable { Nothing, Events, Stop };

Readable waitForEvents(int events, int stop, std::chrono::milliseconds longest) {
    std::array<pollfd, 2> waited = {pollfd{events, POLLIN, 0}, pollfd{stop, POLLIN, 0}};
    const int count = poll(waited.data(), waited.size(), static_cast<int>(longest.count()));
    if (count <= 0) {
        return Readable::Nothing; // Also after a signal, which is met by the descriptor `stop`.
    }
    return waited[1].revents != 0 ? Readable::Stop : Readable::Events;
}

/// Through links too, and at last the root of all.
std::string innermostFolderAbove(const std::string& path) {
    std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code error;
    while (folder.has_relative_path() && !std::filesystem::is_directory(folder, error)) {
        folder = folder.parent_path();
    }
    return folder.string();
}

/// "2024" of "/photos/2024/05" in "/photos".
std::string_view nextName(std::string_view path, std::string_view folder) {
    path.remove_prefix(std::min(path.size(), folder == "/" ? 1 : folder.size() + 1));
    return path.substr(0, path.find('/'));
}

} // namespace

FolderWatch::FolderWatch() : _events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    _isComplete = _events.isOpen();
}

bool FolderWatch::addTree(const std::string& folder) {
    _roots.insert(folder);
    watchTree(folder);
    if (!isFolderThere(folder)) {
        waitFor(folder);
    }
    return _isComplete;
}

int FolderWatch::watchFolder(const std::string& folder, std::uint32_t events) {
    const int number = inotify_add_watch(_events.number(), folder.c_str(), events);
    if (number < 0 && (errno == ENOSPC || errno == ENOMEM || errno == EMFILE || errno == EBADF)) {
        _isComplete = false;
    }
    return number < 0 ? kNoWatch : number;
}

void FolderWatch::watchTree(const std::string& folder) {
    FolderScan scan(folder, [](const ImportProblem& /*problem*/) {}); // The import tells it.
    // Watched before it is read, so that what comes in between is seen by one of the two.
    scan.onFolder([this](const std::string& path) {
        if (const int number = watchFolder(path, kChanges); number != kNoWatch) {
            _folders[number] = path;
        }
    });
    while (_isComplete && scan.next()) {}
}

std::optional<FolderWatch::Changes> FolderWatch::wait(int stop, std::chrono::milliseconds longest) {
    using Clock = std::chrono::steady_clock;
    Changes changes;
    const auto end = Clock::now() + longest;
    auto endOfCollection = Clock::time_point::max(); // Until something has changed.
    const auto look = [&] {
        if (_hasNewsOfAbsent) {
            lookForAbsent(changes);
        }
        if (!changes.isEmpty()) {
            endOfCollection = std::min(endOfCollection, Clock::now() + kLongestCollection);
        }
    };
    look();
    auto readable = Readable::Events;
    while (readable == Readable::Events && Clock::now() < std::min(end, endOfCollection)) {
        // Much happens in a folder that changes nothing in the library.
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        readable = waitForEvents(_events.number(), stop, changes.isEmpty() ? rest : std::min(rest, kQuiet));
        if (readable == Readable::Events) {
            takeEvents(changes);
            look();
        }
    }
    if (changes.isEmpty()) {
        Changes all;     // The time is over: the caller looks through everything.
        waitForLost({}); // Nothing tells that a folder above them moved.
        lookForAbsent(all);
    }
    return readable == Readable::Stop ? std::nullopt : std::optional(std::move(changes));
}

void FolderWatch::takeEvents(Changes& changes) {
    alignas(inotify_event) std::array<char, 65'536> buffer = {};
    for (auto length = read(_events.number(), buffer.data(), buffer.size()); length > 0;
         length = read(_events.number(), buffer.data(), buffer.size())) {
        for (std::size_t position = 0; position < static_cast<std::size_t>(length);) {
            const auto* event = reinterpret_cast<const inotify_event*>(&buffer.at(position));
            const std::string_view name = event->len > 0 ? static_cast<const char*>(event->name) : "";
            takeEvent(event->mask, event->wd, name, changes);
            position += sizeof(inotify_event) + event->len;
        }
    }
}

void FolderWatch::takeEvent(std::uint32_t mask, int watch, std::string_view name, Changes& changes) {
    if ((mask & IN_Q_OVERFLOW) != 0) {
        changes.isIncomplete = true;
        _hasNewsOfAbsent = true;
        return;
    }
    takeNewsOfAbsent(mask, watch, name);
    const auto known = _folders.find(watch);
    if (known == _folders.end()) {
        return;
    }
    const std::string folder = known->second;
    if ((mask & IN_IGNORED) != 0) {
        _folders.erase(known);
        if (_roots.contains(folder)) {
            waitFor(folder);
        }
    } else if ((mask & IN_MOVE_SELF) != 0) {
        waitForLost(folder);
    } else {
        takeFolderEvent(mask, folder, name, changes);
    }
}

void FolderWatch::takeFolderEvent(
    std::uint32_t mask, const std::string& folder, std::string_view name, Changes& changes) {
    if ((mask & IN_ISDIR) == 0) {
        // A file that was made is told again when it is closed.
        if ((mask & IN_CREATE) == 0 && fileKindOfName(name) != FileKind::Other) {
            changes.folders.insert(folder);
        }
    } else if ((mask & (kComings | kGoings)) != 0 && !name.starts_with('.')) {
        const std::string path = folder + "/" + std::string(name);
        if ((mask & kGoings) != 0) {
            removeTree(path);
        } else {
            watchTree(path);
        }
        changes.trees.insert(path);
    }
}

/// A folder that moved would keep its watches, and they the old name.
void FolderWatch::removeTree(const std::string& folder) {
    std::erase_if(_folders, [&](const auto& watched) {
        const bool isGone = isWithin(watched.second, folder);
        if (isGone) {
            inotify_rm_watch(_events.number(), watched.first);
        }
        return isGone;
    });
}

/// @param moved  May be there again, as another folder. It may also have moved into another watched tree, and
///               its watch have a new name already, so that all are looked for.
void FolderWatch::waitForLost(const std::string& moved) {
    for (const std::string& root : _roots) {
        if (root == moved || !isFolderThere(root)) {
            removeTree(root);
            waitFor(root);
        }
    }
}

void FolderWatch::waitFor(const std::string& root) {
    _absent.try_emplace(root);
    _hasNewsOfAbsent = true;
}

void FolderWatch::takeNewsOfAbsent(std::uint32_t mask, int watch, std::string_view name) {
    for (auto& [root, absence] : _absent) {
        if (absence.watch != watch) {
            continue;
        }
        if ((mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) {
            stopWaiting(absence);
            _hasNewsOfAbsent = true;
        } else if (name == nextName(root, absence.place)) {
            _hasNewsOfAbsent = true;
        }
    }
}

void FolderWatch::lookForAbsent(Changes& changes) {
    _hasNewsOfAbsent = false;
    for (auto next = _absent.begin(); next != _absent.end();) {
        const auto current = next++;
        if (isBack(current->first, current->second)) {
            stopWaiting(current->second);
            watchTree(current->first);
            changes.trees.insert(current->first);
            _absent.erase(current);
        }
    }
}

/// Looks after the folder above is watched, so that what comes in between is seen by one of the two.
bool FolderWatch::isBack(const std::string& root, Absence& absence) {
    while (!isFolderThere(root)) {
        std::string place = innermostFolderAbove(root);
        if (place == absence.place) {
            return false;
        }
        stopWaiting(absence);
        absence.place = std::move(place);
        absence.watch = watchFolder(absence.place, kReturns);
    }
    return true;
}

void FolderWatch::stopWaiting(Absence& absence) {
    const int watch = std::exchange(absence, {}).watch;
    const bool isShared =
        _folders.contains(watch) ||
        std::ranges::any_of(_absent, [watch](const auto& other) { return other.second.watch == watch; });
    if (watch != kNoWatch && !isShared) {
        inotify_rm_watch(_events.number(), watch);
    }
}

} // namespace exifcard
