#pragma once

#include <deque>
#include <functional>
#include <utility>

namespace exifcard {

/// Lets what is put into an input field go in one after the other, each with all that belongs to it. Main
/// queue.
class InsertionQueue {
public:
    using Insertion = std::function<void()>;

    /// Runs it at once, or when those before have ended.
    void wait(Insertion insertion) {
        _waiting.push_back(std::move(insertion));
        if (_waiting.size() == 1) {
            runFirst();
        }
    }
    /// The one that runs is all in the field.
    void ended() {
        _waiting.pop_front();
        if (!_waiting.empty()) {
            runFirst();
        }
    }

private:
    void runFirst() {
        const Insertion insertion = _waiting.front(); // It may end at once.
        insertion();
    }

    std::deque<Insertion> _waiting; // The first one runs.
};

} // namespace exifcard
