#pragma once

#include "platform/foundation/FileDescriptor.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace exifcard {

/// Tells which folders of a tree change. For one thread.
class FolderWatch {
public:
    struct Changes {
        std::set<std::string> folders; ///< In which files came, went or were written.
        std::set<std::string> trees;   ///< Folders that came or went, with all below them.
        bool isIncomplete = false;     ///< More happened than could be told: anything may have changed.
        bool isEmpty() const { return folders.empty() && trees.empty() && !isIncomplete; }
    };

    FolderWatch();

    /// Watches a folder and all below it; links are not followed.
    /// @return False when the system lets no more folders be watched. Those that are stay watched.
    bool addTree(const std::string& folder);

    /// Waits until something changes and has been quiet for a moment, or until the time is over. What a
    /// program writes step by step comes together.
    /// @param stop  A descriptor that becomes readable when there is no more to wait for.
    /// @return Nothing when `stop` is readable.
    std::optional<Changes> wait(int stop, std::chrono::milliseconds longest);

    /// Whether every folder that came is watched.
    bool isComplete() const { return _isComplete; }

private:
    void takeEvents(Changes& changes);
    void takeEvent(std::uint32_t mask, int watch, std::string_view name, Changes& changes);
    void removeTree(const std::string& folder);

    FileDescriptor _events;
    std::unordered_map<int, std::string> _folders; // By the system's number of the watch.
    bool _isComplete = true;
};

} // namespace exifcard
