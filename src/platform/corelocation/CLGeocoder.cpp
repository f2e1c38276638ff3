#include "platform/corelocation/CLGeocoder.h"

#include "platform/corelocation/Gazetteer.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/Log.h"

#include <utility>

namespace exifcard {
namespace {

/// Null when it is missing or damaged.
std::unique_ptr<const Gazetteer> openBundledGazetteer() {
    auto file = Data::mappedFile(resourcePath("gazetteer.bin"));
    auto gazetteer = file ? Gazetteer::open(std::move(*file)) : nullptr;
    if (!gazetteer) {
        errorLog("gazetteer.bin: missing or damaged, places stay without names");
    }
    return gazetteer;
}

std::optional<std::string> textOrNothing(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

} // namespace

GeocodingAnswer placeAtCoordinate(const CLLocationCoordinate2D& coordinate) {
    static const auto gazetteer = openBundledGazetteer();
    if (!gazetteer) {
        return {.placemark = std::nullopt, .error = CLError::Network};
    }
    const auto answer = gazetteer->placeAt(coordinate);
    if (answer.error) {
        return {.placemark = std::nullopt, .error = answer.error};
    }
    return {.placemark = CLPlacemark{.subLocality = textOrNothing(answer.subLocality),
                .locality = textOrNothing(answer.locality),
                .country = Locale::current().localizedCountryName(answer.isoCountryCode),
                .isoCountryCode = std::string(answer.isoCountryCode)},
        .error = std::nullopt};
}

void CLGeocoder::reverseGeocodeLocation(
    const std::optional<CLLocation>& location, CompletionHandler completionHandler) {
    DispatchQueue::globalQueue().async([location, handler = std::move(completionHandler)]() mutable {
        auto answer = location ? placeAtCoordinate(location->coordinate)
                               : GeocodingAnswer{.placemark = std::nullopt, .error = CLError::NoResult};
        DispatchQueue::mainQueue().async([answer = std::move(answer), handler = std::move(handler)] {
            std::vector<CLPlacemark> placemarks;
            if (answer.placemark) {
                placemarks.push_back(*answer.placemark);
            }
            handler(placemarks, answer.error);
        });
    });
}

} // namespace exifcard
