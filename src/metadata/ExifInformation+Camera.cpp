#include "metadata/ExifInformation.h"

#include "metadata/DeviceMapping.h"
#include "metadata/RowParts.h"
#include "platform/foundation/Array.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

constexpr CodeText kFileSource[] = {
    {1, N_("Film Scanner")},
    {2, N_("Reflection Print Scanner")},
    {3, N_("Digital Camera")},
};

/// The name under which the camera or phone is sold.
std::optional<std::string> modelText(const Value& model) {
    auto text = storedText(model);
    if (text && !text->empty()) {
        text = DeviceMapping::getDeviceNameFromMachineIdentifier(*text);
    }
    return text;
}

/// "1.0" of [1, 0].
std::string flashPixVersionText(const Value& version) {
    const Array* const numbers = version.arrayView();
    // Intended: a version that is absent reads as an absent object does, so the row is never empty.
    return numbers != nullptr ? numbers->componentsJoinedByString(".") : nothing().description();
}

} // namespace

ExifValue ExifInformation::Make() const {
    return rowWithoutRule("Make", storedText(objectIn(tifDic, kCGImagePropertyTIFFMake)));
}

ExifValue ExifInformation::Model() const {
    return rowWithoutRule("Model", modelText(objectIn(tifDic, kCGImagePropertyTIFFModel)));
}

ExifValue ExifInformation::CameraMakeAndModel() const {
    ExifValue row;
    row.uniqueID = "CameraMakeAndModel";
    return row;
}

ExifValue ExifInformation::Software() const {
    return rowWithoutRule("Software", storedText(objectIn(tifDic, kCGImagePropertyTIFFSoftware)));
}

ExifValue ExifInformation::MakerNote() const {
    return rowWithoutRule("MakerNote", storedText(objectIn(exifDic, kCGImagePropertyExifMakerNote)));
}

ExifValue ExifInformation::LensMake() const {
    return rowWithExifRule(*this, "LensMake", storedText(objectIn(exifDic, kCGImagePropertyExifLensMake)));
}

ExifValue ExifInformation::LensModel() const {
    return rowWithExifRule(*this, "LensModel",
        storedText(objectIn(exifDic, kCGImagePropertyExifLensModel),
            exifAuxObject(*this, kCGImagePropertyExifAuxLensModel)));
}

ExifValue ExifInformation::LensSerialNumber() const {
    return rowWithExifRule(*this, "LensSerialNumber",
        storedText(objectIn(exifDic, kCGImagePropertyExifLensSerialNumber),
            exifAuxObject(*this, kCGImagePropertyExifAuxLensSerialNumber)));
}

ExifValue ExifInformation::CameraSerialNumber() const {
    return rowWithExifRule(*this, "CameraSerialNumber",
        storedText(objectIn(exifDic, kCGImagePropertyExifBodySerialNumber),
            exifAuxObject(*this, kCGImagePropertyExifAuxSerialNumber)));
}

ExifValue ExifInformation::shutterCount() const {
    const Value& imageNumber = exifAuxObject(*this, kCGImagePropertyExifAuxImageNumber);
    return rowWithExifRule(*this, "shutterCount", storedText(imageNumber).value_or(""));
}

ExifValue ExifInformation::FlashPixVersion() const {
    return rowWithExifRule(*this, "FlashPixVersion",
        flashPixVersionText(objectIn(exifDic, kCGImagePropertyExifFlashPixVersion)));
}

ExifValue ExifInformation::FileSource() const {
    const auto code = objectIn(exifDic, kCGImagePropertyExifFileSource).integerValue();
    return rowWithExifRule(*this, "FileSource", textForCode(kFileSource, code));
}

} // namespace exifcard
