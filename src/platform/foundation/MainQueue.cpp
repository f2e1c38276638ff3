#include "platform/foundation/MainQueue.h"

#include "platform/foundation/DispatchThreadPool.h"

#include <utility>

#include <unistd.h>

namespace exifcard {

MainQueue& MainQueue::instance() {
    static auto& queue = kept(std::make_unique<MainQueue>());
    return queue;
}

bool MainQueue::isMainThread() {
    return gettid() == getpid();
}

void MainQueue::async(Block block) {
    {
        const std::lock_guard lock(_mutex);
        _waiting.push_back(std::move(block));
    }
    _changed.notify_all();
    wakeToolkit();
}

/// Calls the wake handler once between two drains, without the lock.
void MainQueue::wakeToolkit() {
    std::function<void()> wake;
    {
        const std::lock_guard lock(_mutex);
        if (!_wake || _isWakeUnderWay || _waiting.empty()) {
            return;
        }
        _isWakeUnderWay = true;
        wake = _wake;
    }
    wake();
}

void MainQueue::runNext(std::unique_lock<std::mutex>& lock) {
    Block block = std::move(_waiting.front());
    _waiting.pop_front();
    ++_started;
    lock.unlock();
    runDispatchedBlock(block);
    block = nullptr; // What it holds is let go outside the lock.
    lock.lock();
}

void MainQueue::runUntilStopped() {
    std::unique_lock lock(_mutex);
    while (true) {
        _changed.wait(lock, [this] { return !_waiting.empty() || isStopDue(); });
        if (isStopDue()) {
            _stopAfter.reset();
            return;
        }
        runNext(lock);
    }
}

void MainQueue::stop() {
    {
        const std::lock_guard lock(_mutex);
        _stopAfter = _started + _waiting.size();
    }
    _changed.notify_all();
}

void MainQueue::drain() {
    std::unique_lock lock(_mutex);
    _isWakeUnderWay = false;
    // A block that puts the next one on the queue must not keep the toolkit from its own events.
    for (auto left = _waiting.size(); left > 0 && !_waiting.empty(); --left) {
        runNext(lock);
    }
}

void MainQueue::setWakeHandler(std::function<void()> wake) {
    {
        const std::lock_guard lock(_mutex);
        _wake = std::move(wake);
        _isWakeUnderWay = false;
    }
    wakeToolkit();
}

void MainRunLoop::runUntilStopped() {
    MainQueue::instance().runUntilStopped();
}

void MainRunLoop::stop() {
    MainQueue::instance().stop();
}

void MainRunLoop::drain() {
    MainQueue::instance().drain();
}

void MainRunLoop::setWakeHandler(std::function<void()> wake) {
    MainQueue::instance().setWakeHandler(std::move(wake));
}

void MainRunLoop::goFirst() {
    DispatchThreadPool::shared().comeLast();
}

} // namespace exifcard
