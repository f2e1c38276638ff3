#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class ExifInformation;
class JsonWriter;

/// The rows that were asked for.
struct ChosenFields {
    std::vector<std::string> keys;
    std::vector<std::string> videoKeys; ///< The same of videos.
    bool includesRawKeys = false;       ///< Keys that give no row are shown too.
};

/// The visible fields of cards; those of a video differ.
ChosenFields fieldsOfCard();
/// The visible fields of one list, for photos and videos.
ChosenFields fieldsOfList(std::string_view name);

/// Writes the record and its rows as an object.
/// @param name  Of the file.
void writePhotoRows(
    JsonWriter& json, const std::string& name, const ExifInformation& record, const ChosenFields& fields);
/// That object in a line of its own.
std::string photoRowsJSON(const std::string& name, const ExifInformation& record, const ChosenFields& fields);
/// The rows for people.
std::string photoRowsText(const ExifInformation& record, const ChosenFields& fields, bool usesColor);

} // namespace exifcard
