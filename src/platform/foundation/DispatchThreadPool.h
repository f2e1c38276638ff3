#pragma once

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/WakeSignal.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

namespace exifcard {

/// The threads that run the blocks of all concurrent queues.
///
/// At most `width` threads compute at a time. A thread that says it is blocked
/// (`BlockingSection`) gives its turn to another, new one if need be, up to
/// `mostThreads` in all. A thread without work ends after `keepIdle`. No thread
/// runs before the first block.
///
/// The threads are detached and hold the pool, so that a program may end at any
/// moment, whatever they are doing.
class DispatchThreadPool : public std::enable_shared_from_this<DispatchThreadPool> {
public:
    struct Limits {
        std::size_t width = 0;
        std::size_t mostThreads = 0;
        std::chrono::milliseconds keepIdle = {};
    };

    static std::shared_ptr<DispatchThreadPool> make(const Limits& limits);
    /// The pool of the global and the named queues; it lives as long as the process.
    static DispatchThreadPool& shared();

    DispatchThreadPool(const DispatchThreadPool&) = delete;
    DispatchThreadPool& operator=(const DispatchThreadPool&) = delete;

    /// Blocks of a higher priority start first; those of one priority in order. Never waits for a thread of
    /// the pool, which may come last for the processor.
    void submit(DispatchQueue::Block block, DispatchQueue::Priority priority);
    /// How many threads there are: working, blocked and idle.
    std::size_t threadCount();
    /// Threads that start from then on come after the other threads of the process for the processor.
    void comeLast() { _comesLast = true; }

private:
    friend class BlockingSection;

    explicit DispatchThreadPool(const Limits& limits) : _limits(limits) {}

    struct Submitted;

    void takeSubmitted();
    void proceedWithSubmitted();
    bool mayTakeBlock() const;
    std::optional<DispatchQueue::Block> takeBlock();
    void letWorkProceed();
    void startThread();
    void work();
    bool waitForBlock(std::unique_lock<std::mutex>& lock);
    void beginBlocking();
    void endBlocking();

    const Limits _limits;
    std::atomic<bool> _comesLast = false;
    std::atomic<Submitted*> _submitted =
        nullptr; ///< The latest first; those that are not among the waiting yet.
    /// Whoever gives it back calls `proceedWithSubmitted` then.
    std::mutex _mutex;
    WakeSignal _workOrTurn;                                   ///< More wakes than work do no harm.
    std::array<std::deque<DispatchQueue::Block>, 4> _waiting; // One a priority. Guarded by _mutex.
    std::size_t _threads = 0;                                 // Guarded by _mutex.
    std::size_t _idle = 0;                                    // Guarded by _mutex.
    /// Threads that run a block and are not blocked in it, or have just been
    /// started to. Exceeds the width for a moment when blocked ones go on.
    std::size_t _computing = 0; // Guarded by _mutex.
};

/// Runs the block; an exception that leaves it ends the program with its text.
void runDispatchedBlock(const DispatchQueue::Block& block) noexcept;

/// Ends the program over a programming error, with one line on standard error.
[[noreturn]] void endProgram(std::string_view message);

/// An object that is never destroyed, so that detached threads may use it while
/// the process ends.
template<typename Type>
Type& kept(std::unique_ptr<Type> object) {
    return *object.release();
}

} // namespace exifcard
