#include "metadata/ExifInformation.h"

#include "metadata/RowParts.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/NumberFormatter.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/ImageProperties.h"

#include <cmath>

namespace exifcard {
namespace {

/// How far a reciprocal may lie from a whole number to be read as one. Absolute:
/// times near a half or a third that are no exact fractions stay decimal.
constexpr double kReciprocalTolerance = 0.01;
constexpr double kSquareRootOfTwo = 1.41421356237;

bool isNearlyWhole(double number) {
    return std::abs(number - std::ceil(number)) < kReciprocalTolerance ||
           std::abs(number - std::floor(number)) < kReciprocalTolerance;
}

/// The first rating by `integerFormat`; without a list of ratings the ISO speed by `objectFormat`.
std::string sensitivityText(
    const DictionaryPtr& exifDic, std::string_view integerFormat, std::string_view objectFormat) {
    const Value& ratings = objectIn(exifDic, kCGImagePropertyExifISOSpeedRatings);
    if (ratings.isNothing()) {
        return stringWithFormat(objectFormat, {objectIn(exifDic, kCGImagePropertyExifISOSpeed)});
    }
    const Array* const list = ratings.arrayView();
    return stringWithFormat(integerFormat, {list != nullptr ? list->firstObject().integerValue() : 0});
}

/// A row in whole millimetres, the fraction dropped.
ExifValue millimetreRow(const ExifInformation& record, FieldName name, std::string_view property) {
    const auto millimetres = objectIn(record.exifDic, property).integerValue();
    auto row = rowWithExifRule(record, name, stringWithFormat("%lld mm", {millimetres}));
    row.exifRAWValue = stringWithFormat("%lld", {millimetres});
    return row;
}

float floatIn(const DictionaryPtr& dictionary, std::string_view property) {
    return objectIn(dictionary, property).floatValue();
}

} // namespace

ExifValue ExifInformation::ApertureValue() const {
    const float fNumber = floatIn(exifDic, kCGImagePropertyExifFNumber);
    return rowWithExifRule(*this, "ApertureValue", stringWithFormat("f/%0.1f", {fNumber}));
}

ExifValue ExifInformation::ApertureMax() const {
    const Value& apex = objectIn(exifDic, kCGImagePropertyExifMaxApertureValue);
    std::string text;
    if (!apex.isNothing()) {
        text = stringWithFormat("%@ (APEX = %@)", {FStopsFromApexValue(apex.floatValue()), apex});
    }
    return rowWithExifRule(*this, "ApertureMax", std::move(text));
}

Value ExifInformation::FNumber() const {
    return objectIn(metaDataDictionary, "FNumber");
}

ExifValue ExifInformation::ISOSpeedRatings() const {
    return rowWithExifRule(*this, "ISOSpeedRatings", sensitivityText(exifDic, "ISO %lld", "ISO %@"));
}

ExifValue ExifInformation::ISOSpeedValue() const {
    return rowWithExifRule(*this, "ISOSpeedValue", sensitivityText(exifDic, "%lld", "%@"));
}

ExifValue ExifInformation::FocalLength() const {
    return millimetreRow(*this, "FocalLength", kCGImagePropertyExifFocalLength);
}

ExifValue ExifInformation::FocalLenIn35mmFilm() const {
    return millimetreRow(*this, "FocalLenIn35mmFilm", kCGImagePropertyExifFocalLenIn35mmFilm);
}

ExifValue ExifInformation::ExposureTime() const {
    const float seconds = floatIn(exifDic, kCGImagePropertyExifExposureTime);
    return rowWithExifRule(
        *this, "ExposureTime", stringWithFormat("%f - ( %@ )", {seconds, shutterSpeedString()}));
}

ExifValue ExifInformation::ShutterSpeedStringValue() const {
    return rowWithExifRule(*this, "ShutterSpeedStringValue", shutterSpeedString());
}

ExifValue ExifInformation::ExposureBiasValue() const {
    const float bias = floatIn(exifDic, kCGImagePropertyExifExposureBiasValue);
    return rowWithExifRule(*this, "ExposureBiasValue", stringWithFormat("%0.2f", {bias}));
}

ExifValue ExifInformation::DigitalZoomRatio() const {
    const float ratio = floatIn(exifDic, kCGImagePropertyExifDigitalZoomRatio);
    return rowWithExifRule(*this, "DigitalZoomRatio", stringWithFormat("%f", {ratio}));
}

std::string ExifInformation::shutterSpeedString() const {
    const float seconds = floatIn(exifDic, kCGImagePropertyExifExposureTime);
    if (seconds != 0 && seconds < 1) {
        const double reciprocal = 1 / seconds; // Rounded to single precision first.
        return isNearlyWhole(reciprocal) ? localizedStringWithFormat(N_("1/%0.0f seconds"), {reciprocal})
                                         : localizedStringWithFormat(N_("%0.5f seconds"), {seconds});
    }
    const auto wholeSeconds = saturatingInteger(seconds);
    return seconds == 1 ? localizedStringWithFormat(N_("%ld second"), {wholeSeconds})
                        : localizedStringWithFormat(N_("%ld seconds"), {wholeSeconds});
}

std::string ExifInformation::FStopsFromApexValue(float apexValue) {
    static const NumberFormatter formatter({.style = NumberFormatter::Style::Decimal,
        .maximumFractionDigits = 1,
        .roundingMode = NumberFormatter::RoundingMode::HalfDown});
    const auto fStops = static_cast<float>(std::pow(kSquareRootOfTwo, static_cast<double>(apexValue)));
    return formatter.stringFromNumber(fStops);
}

} // namespace exifcard
