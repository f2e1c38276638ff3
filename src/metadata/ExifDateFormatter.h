#pragma once

namespace exifcard {

class DateFormatter;

/// The one formatter of dates in metadata: "2020:01:02 03:04:05", without any
/// user's conventions, in the system's time zone. Thread-safe.
const DateFormatter& exifDateFormatter();

} // namespace exifcard
