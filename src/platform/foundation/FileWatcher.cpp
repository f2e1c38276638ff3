#include "platform/foundation/FileWatcher.h"

#include "platform/foundation/FileDescriptor.h"

#include <poll.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <thread>

#include <sys/eventfd.h>
#include <sys/inotify.h>

namespace exifcard {

struct FileWatcher::State {
    FileDescriptor events;
    FileDescriptor stop; // An eventfd, readable once the watcher is gone.
    std::string fileName;
    std::function<void()> handler;
    std::thread thread;

    /// Calls the handler until it is time to stop.
    void run() const;
};

namespace {

constexpr std::uint32_t kChanges =
    IN_CREATE | IN_MODIFY | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ONLYDIR;

/// Reads all that waits and answers whether any of it is about the file.
bool takeEvents(int events, std::string_view fileName) {
    alignas(inotify_event) std::array<char, 16'384> buffer = {};
    bool isAboutFile = false;
    for (auto length = read(events, buffer.data(), buffer.size()); length > 0;
         length = read(events, buffer.data(), buffer.size())) {
        for (std::size_t position = 0; position < static_cast<std::size_t>(length);) {
            const auto* event = reinterpret_cast<const inotify_event*>(&buffer.at(position));
            isAboutFile =
                isAboutFile || (event->len > 0 && fileName == static_cast<const char*>(event->name));
            position += sizeof(inotify_event) + event->len;
        }
    }
    return isAboutFile;
}

/// Waits for an event. False when it is time to stop.
bool waitForEvents(int events, int stop) {
    std::array<pollfd, 2> waited = {pollfd{events, POLLIN, 0}, pollfd{stop, POLLIN, 0}};
    poll(waited.data(), waited.size(), -1);
    return waited[1].revents == 0;
}

} // namespace

void FileWatcher::State::run() const {
    while (waitForEvents(events.number(), stop.number())) {
        if (takeEvents(events.number(), fileName)) {
            handler();
        }
    }
}

std::unique_ptr<FileWatcher> FileWatcher::watch(const std::string& path, std::function<void()> handler) {
    namespace fs = std::filesystem;
    std::error_code error;
    const auto linked = fs::canonical(path, error);
    const fs::path file = error ? fs::path(path) : linked;

    auto state = std::make_shared<State>();
    state->events = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    state->stop = FileDescriptor(eventfd(0, EFD_CLOEXEC));
    if (!state->stop.isOpen() ||
        inotify_add_watch(state->events.number(), file.parent_path().c_str(), kChanges) < 0) {
        return nullptr;
    }
    state->fileName = file.filename();
    state->handler = std::move(handler);
    // The thread holds what it uses: the handler may destroy the watcher.
    state->thread = std::thread([state] { state->run(); });
    return std::unique_ptr<FileWatcher>(new FileWatcher(std::move(state)));
}

FileWatcher::~FileWatcher() {
    eventfd_write(_state->stop.number(), 1);
    if (_state->thread.get_id() == std::this_thread::get_id()) {
        _state->thread.detach();
    } else {
        _state->thread.join();
    }
}

} // namespace exifcard
