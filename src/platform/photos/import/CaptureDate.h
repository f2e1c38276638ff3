#pragma once

#include "platform/foundation/Date.h"

#include <optional>
#include <string_view>

namespace exifcard {

/// The moment that a camera wrote down.
///
/// @param text     "2024:05:06 07:08:09", or ISO 8601 as editors and videos write it
/// ("2024-05-06T07:08:09.5Z",
///                 "2024-05-06T07:08:09+0200", "2024-05-06"). An offset in the text itself comes first.
/// @param offset   From UTC: "+02:00"; otherwise the time is that of this computer's zone.
/// @param fraction The digits behind the seconds: "123" for 0.123 s.
/// @return Nothing for what is no date of the years 1 to 9999, such as "0000:00:00 00:00:00".
std::optional<Date> captureDate(
    std::string_view text, std::string_view offset = {}, std::string_view fraction = {});

} // namespace exifcard
