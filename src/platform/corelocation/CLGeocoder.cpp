#include "platform/corelocation/CLGeocoder.h"

#include "platform/corelocation/Gazetteer.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/Log.h"

#include <cstdint>
#include <mutex>
#include <unordered_map>
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

/// The countries' names in the user's language, each looked up once: it costs more than the place.
class CountryNames {
public:
    std::string nameOf(std::string_view isoCode) {
        const auto generation = localizationGeneration();
        const std::lock_guard lock(_mutex);
        if (generation != _generation) {
            _generation = generation;
            _names.clear();
        }
        const auto [name, isNew] = _names.try_emplace(std::string(isoCode));
        if (isNew) {
            name->second = Locale::current().localizedCountryName(isoCode);
        }
        return name->second;
    }

private:
    std::mutex _mutex;
    std::uint64_t _generation = 0;                       // Of `_names`. Guarded by _mutex.
    std::unordered_map<std::string, std::string> _names; // By code. Guarded by _mutex.
};

std::string countryName(std::string_view isoCode) {
    static CountryNames names;
    return names.nameOf(isoCode);
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
    const auto place = gazetteer->placeAt(coordinate);
    GeocodingAnswer answer;
    answer.error = place.error;
    if (!place.error) {
        auto& placemark = answer.placemark.emplace();
        placemark.subLocality = textOrNothing(place.subLocality);
        placemark.locality = textOrNothing(place.locality);
        placemark.country = countryName(place.isoCountryCode);
        placemark.isoCountryCode = place.isoCountryCode;
    }
    return answer;
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
