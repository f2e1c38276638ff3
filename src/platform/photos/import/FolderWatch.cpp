#include "platform/photos/import/FolderWatch.h"

#include "platform/photos/import/FolderScan.h"
#include "platform/photos/import/LibraryPlaces.h"

#include <poll.h>

#include <array>
#include <cerrno>
#include <cstddef>

#include <sys/inotify.h>

namespace exifcard {
namespace {

/// A change of content is told when the file is closed, so that no half of it is read.
constexpr std::uint32_t kChanges = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE |
                                   IN_ATTRIB | IN_ONLYDIR | IN_DONT_FOLLOW | IN_EXCL_UNLINK;
constexpr std::uint32_t kComings = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kGoings = IN_DELETE | IN_MOVED_FROM;

/// What belongs together follows within this time; a change is to be seen within a second.
constexpr std::chrono::milliseconds kQuiet(100);
constexpr std::chrono::milliseconds kLongestCollection(400);

enum class Readable { Nothing, Events, Stop };

Readable waitFor(int events, int stop, std::chrono::milliseconds longest) {
    std::array<pollfd, 2> waited = {pollfd{events, POLLIN, 0}, pollfd{stop, POLLIN, 0}};
    const int count = poll(waited.data(), waited.size(), static_cast<int>(longest.count()));
    if (count <= 0) {
        return Readable::Nothing; // Also after a signal, which is met by the descriptor `stop`.
    }
    return waited[1].revents != 0 ? Readable::Stop : Readable::Events;
}

} // namespace

FolderWatch::FolderWatch() : _events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    _isComplete = _events.isOpen();
}

bool FolderWatch::addTree(const std::string& folder) {
    FolderScan scan(folder, [](const ImportProblem& /*problem*/) {}); // The import tells it.
    // Watched before it is read, so that what comes in between is seen by one of the two.
    const auto watch = [this](const std::string& path) {
        const int number = inotify_add_watch(_events.number(), path.c_str(), kChanges);
        if (number >= 0) {
            _folders[number] = path;
        } else if (errno == ENOSPC || errno == ENOMEM || errno == EMFILE || errno == EBADF) {
            _isComplete = false;
        }
    };
    scan.onFolder(watch);
    while (_isComplete && scan.next()) {}
    return _isComplete;
}

std::optional<FolderWatch::Changes> FolderWatch::wait(int stop, std::chrono::milliseconds longest) {
    Changes changes;
    const auto start = std::chrono::steady_clock::now();
    auto readable = waitFor(_events.number(), stop, longest);
    const auto collectedSince = std::chrono::steady_clock::now();
    while (readable == Readable::Events) {
        takeEvents(changes);
        const bool isLongEnough = std::chrono::steady_clock::now() - collectedSince > kLongestCollection;
        const bool isNothing = changes.isEmpty() && std::chrono::steady_clock::now() - start < longest;
        readable =
            isLongEnough ? Readable::Nothing : waitFor(_events.number(), stop, isNothing ? longest : kQuiet);
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
        return;
    }
    const auto known = _folders.find(watch);
    if (known == _folders.end()) {
        return;
    }
    const std::string folder = known->second;
    if ((mask & IN_IGNORED) != 0) {
        _folders.erase(known);
    } else if ((mask & IN_ISDIR) == 0) {
        // A file that was made is told again when it is closed.
        if ((mask & IN_CREATE) == 0 && fileKindOfName(name) != FileKind::Other) {
            changes.folders.insert(folder);
        }
    } else if ((mask & (kComings | kGoings)) != 0 && !name.starts_with('.')) {
        const std::string path = folder + "/" + std::string(name);
        if ((mask & kGoings) != 0) {
            removeTree(path);
        } else {
            addTree(path);
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

} // namespace exifcard
