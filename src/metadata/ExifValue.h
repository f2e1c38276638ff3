#pragma once

#include <optional>
#include <string>

namespace exifcard {

/// One readable row of a photo's card. What is absent was never set.
struct ExifValue {
    /// The field key that made the row ("ApertureValue"); its identity in the editor.
    std::optional<std::string> uniqueID = std::nullopt;
    /// The label, in the user's language.
    std::optional<std::string> exifKeyReadableFormat = std::nullopt;
    /// The value text. Empty or absent when unknown; "Not available" or "GPS
    /// Data not available" when the record lacks what the row is about.
    std::optional<std::string> exifValueReadableFormat = std::nullopt;
    /// The label with its unit in brackets; only the speed has one.
    std::optional<std::string> exifKeyWithUnitTypeReadableFormat = std::nullopt;
    /// A plain number for editing and computing; only the focal lengths and the star rating have one.
    std::optional<std::string> exifRAWValue = std::nullopt;
    /// The picture to show beside the value; only the flash has one.
    std::optional<std::string> exifValueIconFileName = std::nullopt;

    bool operator==(const ExifValue&) const = default;
};

} // namespace exifcard
