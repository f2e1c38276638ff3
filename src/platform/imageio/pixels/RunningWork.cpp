#include "platform/imageio/pixels/RunningWork.h"

#include <chrono>
#include <cstdlib>

namespace exifcard {
namespace {

/// Longer than the largest picture takes; a program that does not end is worse than one that ends badly.
constexpr std::chrono::seconds kLongestWait(10);

} // namespace

RunningWork::Call::~Call() {
    if (_mayRun) {
        _work.end();
    }
}

RunningWork& RunningWork::instance() {
    static RunningWork& work = []() -> RunningWork& {
        std::atexit([] { instance().endAll(); });
        return *new RunningWork; // Threads outlive everything else.
    }();
    return work;
}

bool RunningWork::begin() {
    const std::scoped_lock lock(_mutex);
    _count += _isEnding ? 0 : 1;
    return !_isEnding;
}

void RunningWork::end() {
    const std::scoped_lock lock(_mutex);
    --_count;
    _ended.notify_all();
}

void RunningWork::endAll() {
    std::unique_lock lock(_mutex);
    _isEnding = true;
    _ended.wait_for(lock, kLongestWait, [this] { return _count == 0; });
}

} // namespace exifcard
