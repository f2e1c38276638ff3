#include "platform/corelocation/CLGeocoder.h"

#include "platform/corelocation/Gazetteer.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Locale.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/foundation/Log.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
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
        const auto number = numberOf(isoCode);
        if (!number) {
            return Locale::current().localizedCountryName(isoCode);
        }
        const auto generation = localizationGeneration();
        const std::lock_guard lock(_mutex);
        if (generation != _generation) {
            _generation = generation;
            _names.fill({});
        }
        auto& name = _names[*number];
        if (name.empty()) {
            name = Locale::current().localizedCountryName(isoCode);
        }
        return name;
    }

private:
    static constexpr std::size_t kLetters = 26;

    /// Nothing for what is no code, which only a damaged file gives.
    static std::optional<std::size_t> numberOf(std::string_view isoCode) {
        const auto isLetter = [](char character) { return character >= 'A' && character <= 'Z'; };
        if (isoCode.size() != 2 || !isLetter(isoCode[0]) || !isLetter(isoCode[1])) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(isoCode[0] - 'A') * kLetters +
               static_cast<std::size_t>(isoCode[1] - 'A');
    }

    std::mutex _mutex;
    std::uint64_t _generation = 0;                           // Of `_names`. Guarded by _mutex.
    std::array<std::string, kLetters* kLetters> _names = {}; // Empty when not asked yet. Guarded by _mutex.
};

std::string countryName(std::string_view isoCode) {
    static auto& names = *new CountryNames; // Threads may still ask while the program ends.
    return names.nameOf(isoCode);
}

void setUnlessEmpty(std::optional<std::string>& text, std::string_view value) {
    if (!value.empty()) {
        text.emplace(value);
    }
}

} // namespace

GeocodingAnswer placeAtCoordinate(const CLLocationCoordinate2D& coordinate) {
    static const auto gazetteer = openBundledGazetteer();
    const auto place =
        gazetteer ? gazetteer->placeAt(coordinate) : Gazetteer::Answer{.error = CLError::Network};
    GeocodingAnswer answer;
    answer.error = place.error;
    if (!place.error) {
        auto& placemark = answer.placemark.emplace();
        setUnlessEmpty(placemark.subLocality, place.subLocality);
        setUnlessEmpty(placemark.locality, place.locality);
        placemark.country.emplace(countryName(place.isoCountryCode));
        placemark.isoCountryCode.emplace(place.isoCountryCode);
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
