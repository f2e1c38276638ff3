#include "library/QueueManager.h"

#include "platform/foundation/Identifiers.h"

#include <string>

namespace exifcard {
namespace {

std::shared_ptr<DispatchQueue> makeQueue(std::string_view name) {
    return DispatchQueue::makeConcurrent(std::string(kQueueLabelPrefix) + "." + std::string(name));
}

} // namespace

QueueManager::QueueManager()
    : completeEXIFFetchingQueue(makeQueue("completeEXIFFetchingQueue"))
    , rawFileProcessingQueue(makeQueue("rawFileProcessingQueue")) {
}

QueueManager& QueueManager::sharedInstance() {
    static auto* const manager = new QueueManager; // Its work may end after everything else.
    return *manager;
}

} // namespace exifcard
