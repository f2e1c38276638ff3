#include "sending/InsertionQueue.h"

#include <deque>
#include <map>
#include <utility>

namespace exifcard {
namespace {

using Insertions = std::deque<InsertionQueue::Insertion>; // The first one runs.

/// Those of the conversations in which something is inserted.
std::map<std::string, Insertions>& insertionsByConversation() {
    static auto& insertions = *new std::map<std::string, Insertions>();
    return insertions;
}

void runFirst(const Insertions& insertions) {
    const InsertionQueue::Insertion insertion = insertions.front(); // It may end at once, and its queue go.
    insertion();
}

} // namespace

void InsertionQueue::wait(const std::string& conversation, Insertion insertion) {
    Insertions& insertions = insertionsByConversation()[conversation];
    insertions.push_back(std::move(insertion));
    if (insertions.size() == 1) {
        runFirst(insertions);
    }
}

void InsertionQueue::ended(const std::string& conversation) {
    const auto found = insertionsByConversation().find(conversation);
    found->second.pop_front();
    if (found->second.empty()) {
        insertionsByConversation().erase(found);
    } else {
        runFirst(found->second);
    }
}

} // namespace exifcard
