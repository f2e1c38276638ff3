#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

namespace exifcard {

/// A request that is under way.
struct RequestState {
    std::int32_t number = 0;
    std::atomic<bool> isCancelled = false;
};
using RequestStatePtr = std::shared_ptr<RequestState>;

/// The requests that are under way, by their numbers, which are positive. Thread-safe.
class RequestTable {
public:
    RequestStatePtr begin();
    void end(const RequestState& request);
    /// Does nothing for a number that is unknown or was ended.
    void cancel(std::int32_t number);

private:
    std::mutex _mutex;
    std::int32_t _last = 0;                            // Guarded by _mutex.
    std::map<std::int32_t, RequestStatePtr> _underWay; // Guarded by _mutex.
};

} // namespace exifcard
