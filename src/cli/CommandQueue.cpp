#include "cli/CommandQueue.h"

#include "platform/foundation/DispatchQueue.h"

namespace exifcard {

ExitStatus runOnQueue(const std::function<ExitStatus()>& work) {
    auto status = ExitStatus::SomethingFailed;
    DispatchQueue::globalQueue().async([&status, &work] {
        status = work();
        MainRunLoop::stop();
    });
    MainRunLoop::runUntilStopped();
    return status;
}

} // namespace exifcard
