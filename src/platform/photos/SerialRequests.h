#pragma once

#include "platform/foundation/OperationQueue.h"
#include "platform/photos/RequestTable.h"

namespace exifcard {

/// Requests of one kind, which are answered one after the other.
struct SerialRequests {
    OperationQueue queue{1};
    RequestTable table;
};

} // namespace exifcard
