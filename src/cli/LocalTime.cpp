#include "cli/LocalTime.h"

#include "platform/foundation/NumberText.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <ctime>

namespace exifcard {

std::string localTimeText(Date date) {
    const auto seconds = static_cast<std::time_t>(saturatingInteger(std::floor(date.secondsSince1970)));
    std::tm local{};
    if (localtime_r(&seconds, &local) == nullptr) {
        return {}; // The year does not fit the calendar.
    }
    const long offset = std::abs(local.tm_gmtoff) / 60;
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}{}{:02}:{:02}", local.tm_year + 1900L,
        local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
        local.tm_gmtoff < 0 ? '-' : '+', offset / 60, offset % 60);
}

} // namespace exifcard
