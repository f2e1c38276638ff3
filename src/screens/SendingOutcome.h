#pragma once

#include "sending/PhotoSending.h"

#include <functional>
#include <memory>

namespace exifcard {

class ExifInformation;

/// How a sending of a photo ended.
struct SendingOutcome {
    std::shared_ptr<ExifInformation> record;
    PhotoSendingResult result;
    std::function<void()> sendAgain; ///< On the main queue; works as well when the screen has gone.
};

/// Hears how each sending ended, on the main queue.
using SendingObserver = std::function<void(const SendingOutcome& outcome)>;

} // namespace exifcard
