#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace exifcard {

/// A concurrent queue on a shared pool of threads, or the main queue.
///
/// The pool grows while its threads are blocked (up to 64) and shrinks again.
/// Blocks of one queue start in order and run in parallel; a block that throws
/// ends the program.
class DispatchQueue : public std::enable_shared_from_this<DispatchQueue> {
public:
    using Block = std::function<void()>;
    enum class Priority { High = 2, Default = 0, Low = -2, Background = -32768 };

    /// The serial queue of the main thread, see `MainRunLoop`.
    static DispatchQueue& mainQueue();
    static DispatchQueue& globalQueue(Priority priority = Priority::Default);
    /// A concurrent queue of its own with a name.
    static std::shared_ptr<DispatchQueue> makeConcurrent(std::string label);

    virtual ~DispatchQueue() = default;
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    const std::string& label() const { return _label; }

    virtual void async(Block block) = 0;
    /// Runs the block on the queue and waits for it. Blocks; from the main
    /// thread to the main queue it would wait for ever, so that ends the program.
    void sync(const Block& block);

protected:
    explicit DispatchQueue(std::string label) : _label(std::move(label)) {}

private:
    const std::string _label;
};

/// Counts unfinished work.
class DispatchGroup {
public:
    DispatchGroup();
    ~DispatchGroup();
    DispatchGroup(const DispatchGroup&) = delete;
    DispatchGroup& operator=(const DispatchGroup&) = delete;

    void enter();
    /// Without an enter before it, ends the program.
    void leave();
    /// Runs `block` once, asynchronously on `queue`, when the count is 0, also when it is 0 already.
    /// A named queue is kept until then.
    void notify(DispatchQueue& queue, DispatchQueue::Block block);
    /// Blocks until the count is 0; never on the main queue.
    void wait();

private:
    struct State;
    std::shared_ptr<State> _state;
};

/// A counting semaphore with first-in first-out wake-up.
class DispatchSemaphore {
public:
    explicit DispatchSemaphore(long value);
    ~DispatchSemaphore();
    DispatchSemaphore(const DispatchSemaphore&) = delete;
    DispatchSemaphore& operator=(const DispatchSemaphore&) = delete;

    void signal();
    /// Blocks until a signal comes; never on the main queue. Answers 0.
    long wait();

private:
    struct State;
    std::shared_ptr<State> _state;
};

/// Tells the pool that the calling thread is about to block, so that it may
/// start another in its place; semaphores and groups do this by themselves.
class BlockingSection {
public:
    BlockingSection();
    ~BlockingSection();
    BlockingSection(const BlockingSection&) = delete;
    BlockingSection& operator=(const BlockingSection&) = delete;
};

/// The main queue of a program without a toolkit: drained by whoever calls `runUntilStopped`.
class MainRunLoop {
public:
    /// Runs the blocks of the main queue on the calling thread until `stop`.
    static void runUntilStopped();
    /// Ends `runUntilStopped`, also the next one when none runs yet. Blocks that
    /// were put on the main queue before still run. May be called from any thread.
    static void stop();
    /// Runs what is waiting now and returns.
    static void drain();
    /// Lets a toolkit's run loop own the main queue: `wake` is called, from any
    /// thread, whenever `drain` should be called on the main thread; once until then. It
    /// may still be called a last time while another takes its place.
    static void setWakeHandler(std::function<void()> wake);
    /// Lets the main thread go before the threads of all queues wherever both want a processor, so that a
    /// frame waits for no picture. Counts for threads that start from then on.
    static void goFirst();
};

} // namespace exifcard
