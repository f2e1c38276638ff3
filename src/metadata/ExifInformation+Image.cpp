#include "metadata/ExifInformation.h"

#include "metadata/Math.h"
#include "metadata/RowParts.h"
#include "platform/foundation/FormatString.h"
#include "platform/foundation/NumberFormatter.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

/// The largest width of a reduced fraction that people can read; above it the ratio is told too.
constexpr double kLargestReadableWidth = 16;

constexpr CodeText kColorSpace[] = {
    {1, N_("sRGB")},
    {2, N_("Adobe RGB")},
    {65533, N_("Wide Gamut RGB")},
    {65535, N_("ICC Profile")},
};

/// "4/3", "1000/333 (3.003003)"; empty for a picture without sides.
std::string aspectRatioText(const CGSize& dimensions) {
    const auto width = saturatingInteger(dimensions.width);
    const auto height = saturatingInteger(dimensions.height);
    const auto divisor = Math::gcdWithA(width, height);
    if (divisor == 0) {
        return {};
    }
    const double reducedWidth = static_cast<double>(width) / static_cast<double>(divisor);
    const double reducedHeight = static_cast<double>(height) / static_cast<double>(divisor);
    if (reducedWidth > kLargestReadableWidth && dimensions.height != 0) {
        const auto ratio = static_cast<float>(dimensions.width / dimensions.height);
        return stringWithFormat("%0.0f/%0.0f (%f)", {reducedWidth, reducedHeight, ratio});
    }
    return stringWithFormat("%0.0f/%0.0f", {reducedWidth, reducedHeight});
}

std::string integerText(const Value& value) {
    return stringWithFormat("%ld", {value.integerValue()});
}

std::string doubleText(const Value& value) {
    return stringWithFormat("%f", {value.doubleValue()});
}

} // namespace

ExifValue ExifInformation::ResolutionInMegaPixel() const {
    static const NumberFormatter formatter(
        {.maximumFractionDigits = 1, .roundingMode = NumberFormatter::RoundingMode::Ceiling});
    const auto megaPixels = static_cast<float>(dimensions.width * dimensions.height / 1'000'000);
    const std::string number = formatter.stringFromNumber(megaPixels);
    return rowWithExifRule(
        *this, "ResolutionInMegaPixel", localizedStringWithFormat(N_("%@ MegaPixels"), {number}));
}

ExifValue ExifInformation::AspectRatioFraction() const {
    return rowWithExifRule(*this, "AspectRatioFraction", aspectRatioText(dimensions));
}

std::int32_t ExifInformation::GCD(std::int32_t a, std::int32_t with) {
    return static_cast<std::int32_t>(Math::gcdWithA(a, with));
}

ExifValue ExifInformation::ColorSpace() const {
    const auto code = objectIn(exifDic, kCGImagePropertyExifColorSpace).integerValue();
    const char* const text = findText(kColorSpace, code);
    return rowWithoutRule(
        "ColorSpace", std::string(localizedString(text != nullptr ? text : N_("Uncalibrated"))));
}

ExifValue ExifInformation::ColorProfile() const {
    auto name = storedText(objectIn(metaDataDictionary, kCGImagePropertyProfileName));
    if (!name || name->empty()) {
        name = localizedString(N_("Unknown"));
    }
    return rowWithoutRule("ColorProfile", std::move(name));
}

ExifValue ExifInformation::ColorModel() const {
    return rowWithoutRule("ColorModel", storedText(objectIn(metaDataDictionary, kCGImagePropertyColorModel)));
}

ExifValue ExifInformation::Depth() const {
    return rowWithoutRule("Depth", integerText(objectIn(metaDataDictionary, kCGImagePropertyDepth)));
}

ExifValue ExifInformation::DPIHeight() const {
    return rowWithoutRule("DPIHeight", doubleText(objectIn(metaDataDictionary, kCGImagePropertyDPIHeight)));
}

ExifValue ExifInformation::DPIWidth() const {
    return rowWithoutRule("DPIWidth", doubleText(objectIn(metaDataDictionary, kCGImagePropertyDPIWidth)));
}

ExifValue ExifInformation::Orientation() const {
    return rowWithoutRule(
        "Orientation", integerText(objectIn(metaDataDictionary, kCGImagePropertyOrientation)));
}

ExifValue ExifInformation::CompressedBitsPerPixel() const {
    return rowWithoutRule(
        "CompressedBitsPerPixel", integerText(objectIn(exifDic, kCGImagePropertyExifCompressedBitsPerPixel)));
}

} // namespace exifcard
