#pragma once

#include "platform/foundation/DispatchQueue.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace exifcard {

/// The serial queue of the main thread; `MainRunLoop` is its public face.
class MainQueue final : public DispatchQueue {
public:
    static MainQueue& instance();
    static bool isMainThread();

    MainQueue() : DispatchQueue("main") {}

    void async(Block block) override;

    void runUntilStopped();
    void stop();
    void drain();
    void setWakeHandler(std::function<void()> wake);

private:
    /// Whether everything that came before the last `stop` has run.
    bool isStopDue() const { return _stopAfter && _started >= *_stopAfter; }
    void wakeToolkit();
    void runNext(std::unique_lock<std::mutex>& lock);

    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<Block> _waiting;              // Guarded by _mutex.
    std::uint64_t _started = 0;              // Blocks taken off so far. Guarded by _mutex.
    std::optional<std::uint64_t> _stopAfter; // Guarded by _mutex.
    std::function<void()> _wake;             // Guarded by _mutex.
    bool _isWakeUnderWay = false;            // Since the last drain. Guarded by _mutex.
};

} // namespace exifcard
