#include "cli/Progress.h"

#include <fmt/format.h>

#include <cstdio>

#include <unistd.h>

namespace exifcard {
namespace {

constexpr auto kTimeBetweenDrawings = std::chrono::milliseconds(100);

} // namespace

Progress::Progress(bool isWanted, std::optional<std::size_t> total)
    : _isWanted(isWanted && isatty(STDERR_FILENO) == 1 && isatty(STDOUT_FILENO) == 0)
    , _total(total) {
}

Progress::~Progress() {
    clear();
}

void Progress::advance() {
    ++_done;
    if (!_isWanted || std::chrono::steady_clock::now() < _nextDrawing) {
        return;
    }
    _nextDrawing = std::chrono::steady_clock::now() + kTimeBetweenDrawings;
    _isShown = true;
    fmt::print(stderr, "\r{}{} files", _done, _total ? fmt::format(" of {}", *_total) : "");
}

void Progress::clear() {
    if (_isShown) {
        fmt::print(stderr, "\r\x1b[K");
        _isShown = false;
    }
}

} // namespace exifcard
