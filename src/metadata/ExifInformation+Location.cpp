#include "metadata/ExifInformation.h"

#include "metadata/RowParts.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/ImageProperties.h"
#include "settings/PersistanceManager.h"

#include <cstdlib>

namespace exifcard {
namespace {

constexpr double kFeetPerMetre = 3.28084;
constexpr double kKilometresPerHour = 3.6; // Of one metre per second.
constexpr double kMilesPerHour = 2.23694;  // Of one metre per second.
constexpr std::int32_t kSecondsPerDegree = 3600;
constexpr std::int32_t kSecondsPerMinute = 60;

/// "48°51'30"", the sign dropped, seconds truncated.
std::string degreesMinutesSeconds(double degrees) {
    const std::int64_t signedSeconds = Value(degrees * kSecondsPerDegree).intValue();
    const auto seconds = std::abs(signedSeconds);
    const auto rest = seconds % kSecondsPerDegree;
    return stringWithFormat(
        "%d°%d'%d\"", {seconds / kSecondsPerDegree, rest / kSecondsPerMinute, rest % kSecondsPerMinute});
}

bool isMetric() {
    return PersistanceManager::sharedInstance().isUsingMetricUnits();
}

} // namespace

std::string ExifInformation::coordinateInReadableFormat(const CLLocationCoordinate2D& coordinate) {
    if (PersistanceManager::sharedInstance().shouldShowGPSInDecimalValues()) {
        return coordinateInReadableDecimalFormat(coordinate);
    }
    return degreesMinutesSeconds(coordinate.latitude) + (coordinate.latitude >= 0 ? "N " : "S ") +
           degreesMinutesSeconds(coordinate.longitude) + (coordinate.longitude >= 0 ? "E" : "W");
}

std::string ExifInformation::coordinateInReadableDecimalFormat(const CLLocationCoordinate2D& coordinate) {
    return stringWithFormat("%f° %f°", {coordinate.latitude, coordinate.longitude});
}

ExifValue ExifInformation::GPS() const {
    const auto coordinate = location ? location->coordinate : CLLocationCoordinate2D();
    return rowWithGPSRule(*this, "GPS", coordinateInReadableFormat(coordinate));
}

ExifValue ExifInformation::GPSAltitude() const {
    const double altitude = location ? location->altitude : 0;
    const double accuracy = location ? location->verticalAccuracy : 0;
    // Intended: also a negative altitude is "above sea level".
    auto text = isMetric() ? localizedStringWithFormat(
                                 N_("%f meters above sea level (+/- %0.2f)"), {altitude, accuracy})
                           : localizedStringWithFormat(N_("%f feet above sea level (+/- %0.2f)"),
                                 {altitude * kFeetPerMetre, accuracy * kFeetPerMetre});
    return rowWithGPSRule(*this, "GPSAltitude", std::move(text));
}

ExifValue ExifInformation::GPSSpeed() const {
    // Intended: a speed that the device did not know is negative and shown like any other.
    const double speed = location ? location->speed : 0;
    const bool isInKilometres = isMetric();
    auto text = isInKilometres
                    ? localizedStringWithFormat(N_("%0.2f Kilometer per hour"), {speed * kKilometresPerHour})
                    : localizedStringWithFormat(N_("%0.2f Miles per hour"), {speed * kMilesPerHour});
    auto row = rowWithGPSRule(*this, "GPSSpeed", std::move(text));
    row.exifKeyWithUnitTypeReadableFormat =
        stringWithFormat(isInKilometres ? "%@ (Kilometer per hour)" : "%@ (Miles per hour)",
            {row.exifKeyReadableFormat.value_or("")});
    return row;
}

ExifValue ExifInformation::GPSDirection() const {
    const Value& reference = objectIn(gpsDic, kCGImagePropertyGPSImgDirectionRef);
    const std::string* const letter = reference.text();
    const bool isTrueNorth = letter != nullptr && (*letter == "T" || *letter == "t");
    // Intended: a magnetic reference stays the letter that is stored.
    const Value shownReference = isTrueNorth ? Value(localizedString(N_("True North"))) : reference;
    return rowWithGPSRule(*this, "GPSDirection",
        stringWithFormat("%@ %@", {objectIn(gpsDic, kCGImagePropertyGPSImgDirection), shownReference}));
}

ExifValue ExifInformation::LocationName() const {
    return rowWithoutRule("LocationName", std::nullopt); // The card fills in the record's `locationName`.
}

ExifValue ExifInformation::MapView() const {
    return rowWithoutRule("MapView", "");
}

ExifValue ExifInformation::Map() const {
    return MapView();
}

} // namespace exifcard
