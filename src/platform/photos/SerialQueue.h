#pragma once

#include <functional>
#include <memory>

namespace exifcard {

/// Runs blocks one after the other, in order, on the shared pool. Blocks that wait when it is dropped still
/// run.
class SerialQueue {
public:
    SerialQueue();
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void async(std::function<void()> block);

private:
    struct State;
    std::shared_ptr<State> _state;
};

} // namespace exifcard
