#pragma once

#include "platform/corelocation/CLLocation.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// A named place; each text is absent when it is not known.
struct CLPlacemark {
    std::optional<std::string> subLocality; ///< The section of a city.
    std::optional<std::string> locality;    ///< The city, town or village.
    std::optional<std::string> country;     ///< In the user's language.
    std::optional<std::string> isoCountryCode;
};

/// The platform's numbers, in the domain "kCLErrorDomain".
enum class CLError {
    LocationUnknown = 0,
    Denied = 1,
    Network = 2,
    NoResult = 8,
    PartialResult = 9,
    Cancelled = 10
};

/// Names places from the bundled gazetteer, without any network.
class CLGeocoder {
public:
    /// Called exactly once, on the main queue: placemarks, or none and an error.
    using CompletionHandler =
        std::function<void(const std::vector<CLPlacemark>& placemarks, std::optional<CLError> error)>;

    /// Answers at most one placemark. No location or an invalid coordinate gives
    /// `NoResult`, open sea `NoResult`, a missing gazetteer `Network`.
    void reverseGeocodeLocation(
        const std::optional<CLLocation>& location, CompletionHandler completionHandler);
};

/// The answer itself, on the calling thread.
struct GeocodingAnswer {
    std::optional<CLPlacemark> placemark;
    std::optional<CLError> error; ///< Set exactly when there is no placemark.
};
GeocodingAnswer placeAtCoordinate(const CLLocationCoordinate2D& coordinate);

} // namespace exifcard
