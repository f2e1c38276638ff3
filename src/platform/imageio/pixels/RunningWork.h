#pragma once

#include <condition_variable>
#include <mutex>

namespace exifcard {

/// The calls of a library that ends with the program: one that is under way then would find it gone. The
/// program's end waits for them, and lets no other begin. Thread-safe.
class RunningWork {
public:
    /// A call, from its beginning to its end.
    class Call {
    public:
        explicit Call(RunningWork& work) : _work(work), _mayRun(work.begin()) {}
        ~Call();
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

        /// False once the program is ending.
        bool mayRun() const { return _mayRun; }

    private:
        RunningWork& _work;
        const bool _mayRun;
    };

    /// The first time: after the library has begun, so that it ends later.
    static RunningWork& instance();

    RunningWork(const RunningWork&) = delete;
    RunningWork& operator=(const RunningWork&) = delete;

private:
    RunningWork() = default;
    bool begin();
    void end();
    void endAll();

    std::mutex _mutex;
    std::condition_variable _ended;
    int _count = 0;         // Guarded by _mutex.
    bool _isEnding = false; // Guarded by _mutex.
};

} // namespace exifcard
