#pragma once

#include <functional>
#include <string>

namespace exifcard {

/// Lets what is put into the input field of a conversation go in one after the other, each with all that
/// belongs to it, whichever screen it comes from. Main queue.
class InsertionQueue {
public:
    using Insertion = std::function<void()>;

    /// Runs it at once, or when those before it in the conversation have ended.
    static void wait(const std::string& conversation, Insertion insertion);
    /// The one that runs in the conversation is all in the field.
    static void ended(const std::string& conversation);
};

} // namespace exifcard
