#include "metadata/ExifInformation.h"

#include "metadata/RowParts.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/FormatString.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

/// Intended: the makers' names are shown as they stand, untranslated, trailing spaces included.
constexpr CodeText kFilmSimulation[] = {
    {0x000, "PROVIA / Standard"},
    {0x100, "Studio Portrait "},
    {0x110, "Studio Portrait Enhanced Saturation"},
    {0x120, "ASTIA / Soft - Studio Portrait Smooth Skin Tone"},
    {0x130, "Studio Portrait Increased Sharpness "},
    {0x200, "Velvia - Fujichrome"},
    {0x300, "Studio Portrait Ex "},
    {0x400, "Velvia / Vivid"},
    {0x500, "Pro Neg. Std "},
    {0x501, "Pro Neg. Hi"},
    {0x600, "Classic Chrome"},
};

constexpr CodeText kMonochromeLook[] = {
    {0x310, "B&W Sepia"},
    {0x300, "Monochrome"},
};

const Array* pictureStyle(const ExifInformation& record, std::string_view name) {
    const auto* const styles = objectIn(record.metaDataDictionary, kPictureStyleDictionary).dictionaryView();
    return styles != nullptr ? styles->objectForKey(name).arrayView() : nullptr;
}

/// The first element that is a number above 0 of the first, the last and the second; else 0 or less.
std::int64_t saturationCode(const Array* saturation) {
    if (saturation == nullptr) {
        return 0;
    }
    auto code = saturation->firstObject().integerValue();
    if (code < 1) {
        code = saturation->lastObject().integerValue();
    }
    if (code < 1 && saturation->count() >= 2) {
        code = saturation->objectAtIndex(1).integerValue();
    }
    return code;
}

std::string filmModeText(const ExifInformation& record) {
    const Array* const simulation = pictureStyle(record, kPictureStyleFilmSimulation);
    if (simulation != nullptr && !simulation->isEmpty()) {
        const auto code = simulation->lastObject().integerValue();
        const char* const text = findText(kFilmSimulation, code);
        return text != nullptr
                   ? std::string(text)
                   : localizedStringWithFormat(N_("Unknown %@"), {stringWithFormat("0x%03llx", {code})});
    }
    const auto code = saturationCode(pictureStyle(record, kPictureStyleSaturation));
    const char* const text = findText(kMonochromeLook, code);
    // Intended: an unknown saturation code is not shown; the text ends in a space.
    return text != nullptr ? std::string(text) : localizedStringWithFormat(N_("Unknown %@"), {""});
}

} // namespace

ExifValue ExifInformation::FilmMode() const {
    return rowWithoutRule("FilmMode", filmModeText(*this));
}

} // namespace exifcard
