#include "sending/PhotoMessage.h"

#include "metadata/ExifInformation.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/Identifiers.h"
#include "platform/foundation/LocalizedString.h"

namespace exifcard {
namespace {

constexpr std::string_view kLandscapeSeparator = "        ";
constexpr std::string_view kPortraitSeparator = "   ";

std::string withComma(const std::optional<std::string>& name) {
    return name ? stringWithFormat("%@,", {*name}) : std::string();
}

std::optional<std::string> unlessEmpty(const std::optional<std::string>& text) {
    return text && !text->empty() ? text : std::nullopt;
}

} // namespace

std::string placeNameFromPlacemark(const CLPlacemark& placemark) {
    return stringWithFormat("%@%@%@",
        {withComma(placemark.subLocality), withComma(placemark.locality), placemark.country.value_or("")});
}

std::string captionOfPhoto(const ExifInformation& record, CGSize photoSize) {
    const bool isLandscape = photoSize.width > photoSize.height;
    const std::string_view separator = isLandscape ? kLandscapeSeparator : kPortraitSeparator;
    const auto aperture = localizedStringWithFormat("f/%0.1f", {record.aperture_fStop.floatValue()});
    const auto iso = localizedStringWithFormat("ISO %ld", {record.iSOSpeed.integerValue()});
    const auto focalLength = localizedStringWithFormat("%ldmm", {record.focalLengthInmm.integerValue()});
    return stringWithFormat("%@%@%@%@%@%@%@",
        {aperture, separator, record.shutterSpeedString(), separator, iso, separator, focalLength});
}

MSMessage messageOfPhoto(
    const ExifInformation& record, std::shared_ptr<const UIImage> picture, CGSize photoSize) {
    MSMessage message;
    message.layout.image = std::move(picture);
    message.layout.imageTitle = unlessEmpty(record.locationName);
    message.layout.caption = captionOfPhoto(record, photoSize);
    message.layout.subcaption = record.cameraModel;
    message.url = URL::withString(std::string(kWebAddress));
    return message;
}

} // namespace exifcard
