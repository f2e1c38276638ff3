#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

namespace exifcard {

/// A line that counts files while a long run goes on: on standard error, where that is a terminal and the
/// results go elsewhere, and gone when the run ends.
class Progress {
public:
    /// @param total  How many files there are; nothing when nobody knows.
    Progress(bool isWanted, std::optional<std::size_t> total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// One more file is done.
    void advance();
    /// Takes the line away, so that another one can be written.
    void clear();

private:
    bool _isShown = false;
    bool _isWanted;
    std::optional<std::size_t> _total;
    std::size_t _done = 0;
    std::chrono::steady_clock::time_point _nextDrawing = std::chrono::steady_clock::now();
};

} // namespace exifcard
