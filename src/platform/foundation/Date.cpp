#include "platform/foundation/Date.h"

#include <chrono>

namespace exifcard {

Date Date::now() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date{std::chrono::duration<double>(sinceEpoch).count()};
}

} // namespace exifcard
