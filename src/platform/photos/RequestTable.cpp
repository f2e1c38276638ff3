#include "platform/photos/RequestTable.h"

#include <limits>

namespace exifcard {

RequestStatePtr RequestTable::begin() {
    auto request = std::make_shared<RequestState>();
    const std::scoped_lock lock(_mutex);
    do {
        _last = _last == std::numeric_limits<std::int32_t>::max() ? 1 : _last + 1;
    } while (_underWay.contains(_last));
    request->number = _last;
    _underWay.emplace(_last, request);
    return request;
}

void RequestTable::end(const RequestState& request) {
    const std::scoped_lock lock(_mutex);
    _underWay.erase(request.number);
}

void RequestTable::cancel(std::int32_t number) {
    const std::scoped_lock lock(_mutex);
    if (const auto found = _underWay.find(number); found != _underWay.end()) {
        found->second->isCancelled = true;
    }
}

} // namespace exifcard
