#pragma once

#include <string_view>

namespace exifcard {

// Posted on the default centre with the settings object as sender, after the
// new value is stored; which setting posts which stands in SettingsTable.h.

/// Which photos the lists show has changed.
inline constexpr std::string_view kPersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent =
    "PersistanceManagerHidePhotosWithoutExifDetailsValueChangedEvent";
/// How dates are written has changed.
inline constexpr std::string_view kPersistanceManagerDateFormatOrPreferenceChangedEvent =
    "PersistanceManagerDateFormatOrPreferenceChangedEvent";
/// What cards and grids show has changed.
inline constexpr std::string_view kExifDataListNeedRefresh = "ExifDataListNeedRefresh";
/// Another program has changed how lists are sorted. No setter posts it.
inline constexpr std::string_view kListSortingChangedEvent = "ListSortingChangedEvent";

} // namespace exifcard
