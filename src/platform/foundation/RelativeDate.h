#pragma once

#include "platform/foundation/Date.h"
#include "platform/foundation/Locale.h"

#include <string>

namespace exifcard {

/// How long `date` lies before `now`, in words of the locale's language: "now" below a minute, then whole
/// minutes, hours, days, weeks, months and years: "2 days ago", "last week". A later date is told as such:
/// "in 3 hours".
std::string timeAgoSinceNow(Date date, Date now = Date::now(), const Locale& locale = Locale::current());

} // namespace exifcard
