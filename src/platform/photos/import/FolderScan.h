#pragma once

#include "platform/photos/import/ScannedFile.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exifcard {

/// Goes through a folder and all below it, one folder at a time. A link is never followed: what it names
/// inside the folder is met anyway, and nothing outside is wanted.
class FolderScan {
public:
    /// @param root  Absolute, without a slash at its end.
    FolderScan(std::string root, ProblemHandler onProblem);

    /// Has every folder told before its entries are read.
    void onFolder(std::function<void(const std::string& path)> handler) { _onFolder = std::move(handler); }

    /// The next folder, each before those in it; nothing at the end.
    std::optional<ScannedFolder> next();

private:
    struct Pending {
        std::string path;
        int depth = 0;
    };
    class Listing;

    bool isNew(int descriptor);
    ScannedFolder scan(const Pending& pending);

    ProblemHandler _onProblem;
    std::function<void(const std::string&)> _onFolder;
    std::vector<Pending> _pending;                          // The next one is the last.
    std::set<std::pair<std::uint64_t, std::uint64_t>> _met; // Device and number of each folder.
};

} // namespace exifcard
