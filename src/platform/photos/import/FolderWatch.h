#pragma once

#include "platform/foundation/FileDescriptor.h"

#include <chrono>
#include <cstdint>
#include <map>
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
        /// Folders that came or went, with all below them. A tree that was asked for is told when it comes.
        std::set<std::string> trees;
        bool isIncomplete = false; ///< More happened than could be told: anything may have changed.
        bool isEmpty() const { return folders.empty() && trees.empty() && !isIncomplete; }
    };

    FolderWatch();

    /// Watches a folder and all below it; links are not followed. One that is not there, now or later, is
    /// waited for in the innermost folder above it.
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
    /// Where a tree is waited for that was asked for and is not there.
    struct Absence {
        std::string place;    ///< The innermost folder above; empty until it is known.
        int watch = kNoWatch; ///< Of that folder.
    };
    static constexpr int kNoWatch = -1;

    int watchFolder(const std::string& folder, std::uint32_t events);
    void watchTree(const std::string& folder);
    void takeEvents(Changes& changes);
    void takeEvent(std::uint32_t mask, int watch, std::string_view name, Changes& changes);
    void takeFolderEvent(
        std::uint32_t mask, const std::string& folder, std::string_view name, Changes& changes);
    void removeTree(const std::string& folder);
    void waitForLost(const std::string& moved);
    void takeNewsOfAbsent(std::uint32_t mask, int watch, std::string_view name);
    void waitFor(const std::string& root);
    bool isBack(const std::string& root, Absence& absence);
    void lookForAbsent(Changes& changes);
    void stopWaiting(Absence& absence);

    FileDescriptor _events;
    std::unordered_map<int, std::string> _folders; // By the system's number of the watch.
    std::set<std::string> _roots;                  // The trees that were asked for.
    std::map<std::string, Absence> _absent;        // Those of them that are not there.
    bool _hasNewsOfAbsent = false;
    bool _isComplete = true;
};

} // namespace exifcard
