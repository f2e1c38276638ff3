#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

namespace exifcard {

/// Lets what is put into the input field of a conversation go in one after the other, each with all that
/// belongs to it, whichever screen it comes from. Main queue.
class InsertionQueue {
public:
    using Insertion = std::function<void()>;

    /// The one of that conversation; never goes.
    static InsertionQueue& ofConversation(const std::string& name);

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
