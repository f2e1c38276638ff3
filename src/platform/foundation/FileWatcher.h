#pragma once

#include <functional>
#include <memory>
#include <string>

namespace exifcard {

/// Tells, on a thread of its own, whenever a file is put in place, written or taken away.
class FileWatcher {
public:
    /// @param path     Need not exist; its folder must, and is not followed when it is moved.
    /// @param handler  Called after one or more changes. It may destroy the watcher.
    /// @return Null where the folder cannot be watched.
    static std::unique_ptr<FileWatcher> watch(const std::string& path, std::function<void()> handler);

    /// Waits for a handler that runs, unless it is the one that destroys the watcher.
    ~FileWatcher();
    FileWatcher(const FileWatcher&) = delete;
    FileWatcher& operator=(const FileWatcher&) = delete;

private:
    struct State;
    explicit FileWatcher(std::shared_ptr<State> state) : _state(std::move(state)) {}

    std::shared_ptr<State> _state; // Shared with the thread.
};

} // namespace exifcard
