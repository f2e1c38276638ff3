#include "sending/InsertionQueue.h"

#include <map>

namespace exifcard {

InsertionQueue& InsertionQueue::ofConversation(const std::string& name) {
    static auto& queues = *new std::map<std::string, InsertionQueue>();
    return queues[name];
}

} // namespace exifcard
