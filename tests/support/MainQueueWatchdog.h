#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace exifcard {

/// Measures the steps of the main queue for as long as it lives: how long the handling of one event of the
/// toolkit keeps everything else waiting. Main thread; one at a time. Works under `WatchedApplication`.
class MainQueueWatchdog {
public:
    MainQueueWatchdog() { current() = this; }
    ~MainQueueWatchdog() {
        current() = nullptr;
        if (_waits >= 0) {
            close(_waits);
        }
    }
    MainQueueWatchdog(const MainQueueWatchdog&) = delete;
    MainQueueWatchdog& operator=(const MainQueueWatchdog&) = delete;

    /// Without the time in which another program had the processor, so that a busy machine changes nothing.
    std::chrono::milliseconds longestStep() const {
        return std::chrono::duration_cast<std::chrono::milliseconds>(_longest);
    }
    /// Whose step it was and of what kind, for a failure's message.
    const std::string& longestStepName() const { return _longestName; }

    /// What a step of the program may last; sanitizers make it several times as slow.
    static std::chrono::milliseconds limit() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        constexpr int kSlowdown = 5;
#else
        constexpr int kSlowdown = 1;
#endif
        return std::chrono::milliseconds(100) * kSlowdown;
    }

private:
    friend class WatchedApplication;
    using Clock = std::chrono::steady_clock;

    static MainQueueWatchdog*& current() {
        static MainQueueWatchdog* watchdog = nullptr;
        return watchdog;
    }
    /// Of this thread, for a processor; 0 where the system does not count it.
    std::chrono::nanoseconds waitedForProcessor() const {
        std::array<char, 128> text = {};
        const ssize_t length = pread(_waits, text.data(), text.size(), 0);
        const std::string_view numbers(text.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
        const std::size_t second = numbers.find(' ') + 1; // After the time on a processor.
        std::int64_t waited = 0;
        std::from_chars(numbers.data() + second, numbers.data() + numbers.size(), waited);
        return std::chrono::nanoseconds(waited);
    }
    void begin() {
        _waitedAtBegin = waitedForProcessor();
        _begin = Clock::now();
    }
    void end(const std::string& receiver, int eventType) {
        const auto taken = Clock::now() - _begin - (waitedForProcessor() - _waitedAtBegin);
        if (taken > _longest) {
            _longest = taken;
            _longestName = receiver + ", event " + std::to_string(eventType);
        }
    }

    int _waits = open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
    Clock::time_point _begin;
    std::chrono::nanoseconds _waitedAtBegin{0};
    std::chrono::nanoseconds _longest{0};
    std::string _longestName;
};

/// Expects that no step of a scene lasts longer than the limit. A scene has three goes: on a busy machine a
/// step may wait for what a thread without a processor holds; a step that is too long by itself is so in
/// each.
/// @param scene  Called with the number of the go, from 0 on.
template<typename Scene>
void expectNoLongStep(const Scene& scene) {
    constexpr int kMostGoes = 3;
    std::string tooLong;
    for (int go = 0; go < kMostGoes; ++go) {
        const MainQueueWatchdog watchdog;
        scene(go);
        if (watchdog.longestStep() <= MainQueueWatchdog::limit()) {
            return;
        }
        tooLong +=
            watchdog.longestStepName() + ": " + std::to_string(watchdog.longestStep().count()) + " ms\n";
    }
    ADD_FAILURE() << tooLong;
}

/// The toolkit's application object of tests.
class WatchedApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        MainQueueWatchdog* const watchdog = _depth == 0 ? MainQueueWatchdog::current() : nullptr;
        if (watchdog == nullptr) {
            return QApplication::notify(receiver, event);
        }
        const std::string name = receiver->metaObject()->className(); // It may end with the step.
        const int type = event->type();
        watchdog->begin();
        ++_depth;
        const bool isHandled = QApplication::notify(receiver, event);
        --_depth;
        if (watchdog == MainQueueWatchdog::current()) {
            watchdog->end(name, type);
        }
        return isHandled;
    }

private:
    int _depth = 0; ///< Steps within steps belong to the outer one.
};

} // namespace exifcard
