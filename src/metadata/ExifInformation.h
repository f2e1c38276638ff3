#pragma once

#include "metadata/ExifInformationState.h"
#include "platform/foundation/NotificationCenter.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace exifcard {

struct ExifKey;

/// What a field key gives: a row, or for a raw key the stored value or nothing.
using FieldAnswer = std::variant<Value, ExifValue>;

/// The record of one photo or video: what its metadata says, and a readable row
/// for each field of it. Held by pointer; observes memory warnings while it lives.
///
/// Each operation after `rows` in this header is named as the field key that it
/// answers and makes its row anew. Rows may be made on any queue.
class ExifInformation : public ExifInformationState, public std::enable_shared_from_this<ExifInformation> {
public:
    /// A record without metadata.
    static std::shared_ptr<ExifInformation> init();
    /// The record of an image properties dictionary; what is null or no
    /// dictionary gives a record without metadata.
    static std::shared_ptr<ExifInformation> exifInformationFromMetaDataDictionary(
        const DictionaryPtr& dictionary);
    /// One record an asset, in that order, which knows its asset and nothing else.
    static std::vector<std::shared_ptr<ExifInformation>> exifInformationsArrayFrom(
        std::span<const std::shared_ptr<const PHAsset>> assets);
    /// "Not available" and "GPS Data not available" in the user's language.
    static std::string_view exifNotAvailableString();
    static std::string_view GPSDataNotAvailableString();

    class Token;
    explicit ExifInformation(Token); ///< Called by `init`.
    ~ExifInformation() = default;
    ExifInformation(const ExifInformation&) = delete;
    ExifInformation& operator=(const ExifInformation&) = delete;

    /// Whether the record has a location.
    bool gpsInfoAvailable() const { return location.has_value(); }
    /// The asset's media type, or the stored one when the record has no asset.
    std::int64_t mediaType() const;
    std::int64_t mediaTypeForEditedCase() const { return _mediaType; }
    void setMediaType(std::int64_t mediaType) { _mediaType = mediaType; }
    /// The file's URL; that of an edited rendition points back at the unedited file.
    URL correctedImageFilePathURL() const;
    /// Drops the cached thumbnail.
    void handleMemoryWarning(const Notification& notification);
    /// Brings the asset's picture into `cachedThumbNailImage`, unless it is there or too large. On the main
    /// queue, where the picture lands too.
    void prefetchAsset();
    void cancelPrefetch();

    /// The twin that the editor changes, made at the first call: the metadata
    /// copied one level deep, without the headline values.
    std::shared_ptr<ExifInformation> editedEXIFInfo();
    /// Null makes the next call build a fresh twin.
    void setEditedEXIFInfo(std::shared_ptr<ExifInformation> editedEXIFInfo);
    /// Takes `row` in place of the edited row of the same key, else at the end.
    void addToEditedExifValues(ExifValue row);
    /// Takes the keywords anew from {IPTC}, if there is one.
    void updateKeywordsArray();
    /// New dictionaries over copied items; empty where the record has none.
    DictionaryPtr copyExifDictionary() const;
    DictionaryPtr copyTIFFDictionary() const;
    DictionaryPtr copyIPTCDictionary() const;
    DictionaryPtr copyGPSDictionary() const;
    DictionaryPtr copyMetadataDictionary() const;

    /// Makes an empty value text "Not available" when the record has no usable EXIF.
    void setNotAvailableStringIfExifNotAvailable(ExifValue& row) const;
    /// Makes any value text "GPS Data not available" when the record has no location.
    void setGPSNotAvailableStringIfExifNotAvailable(ExifValue& row) const;

    /// What `key` names, see `fieldKeys`. A key that names no field ends the program.
    FieldAnswer performCustomSelector(std::string_view key) const;
    FieldAnswer exifValueFor(const ExifKey& key) const;
    /// The values of the fields chosen for sharing, one a line, without labels;
    /// empty when there are none.
    std::string shortExifStringsForShare() const;

    /// "1/125 seconds", "0.30000 seconds", "2 seconds".
    std::string shutterSpeedString() const;
    /// The f-number of an APEX aperture, with at most one decimal: 2.97 is "2.8".
    static std::string FStopsFromApexValue(float apexValue);
    /// Euclid's greatest common divisor, with the sign that his remainders leave.
    static std::int32_t GCD(std::int32_t a, std::int32_t with);
    /// In degrees, minutes and seconds, or decimal where the user chose so.
    static std::string coordinateInReadableFormat(const CLLocationCoordinate2D& coordinate);
    /// "48.858400° 2.294500°".
    static std::string coordinateInReadableDecimalFormat(const CLLocationCoordinate2D& coordinate);

    // Exposure and capture.
    ExifValue ApertureValue() const, ApertureMax() const, ISOSpeedRatings() const, ISOSpeedValue() const;
    ExifValue FocalLength() const, FocalLenIn35mmFilm() const, ExposureTime() const;
    ExifValue ShutterSpeedStringValue() const, ExposureBiasValue() const, DigitalZoomRatio() const;
    ExifValue ExposureMode() const, ExposureProgram() const, Flash() const, MeteringMode() const;
    ExifValue WhiteBalance() const, LightSource() const, SensitivityType() const, Sharpness() const;
    ExifValue Contrast() const, Saturation() const, SceneType() const, SceneCaptureType() const;
    ExifValue SensingMethod() const, SubjectDistRange() const, GainControl() const, CustomRendered() const;
    /// Intended: no row, but the object under "FNumber" at the top level of the
    /// properties, which is nothing as a rule. The row is `ApertureValue`.
    Value FNumber() const;

    // Picture, file and dates.
    ExifValue ResolutionInMegaPixel() const, AspectRatioFraction() const, ColorSpace() const;
    ExifValue ColorProfile() const, ColorModel() const, Depth() const, DPIHeight() const, DPIWidth() const;
    ExifValue Orientation() const, CompressedBitsPerPixel() const, FileSize() const, Duration() const;
    ExifValue FramesPerSecond() const, DateTaken() const, EditedDate() const;

    // Camera, lens, software and descriptions.
    ExifValue Make() const, Model() const, CameraMakeAndModel() const, Software() const, MakerNote() const;
    ExifValue LensMake() const, LensModel() const, LensSerialNumber() const, CameraSerialNumber() const;
    ExifValue shutterCount() const, FlashPixVersion() const, FilmMode() const, FileSource() const;
    ExifValue Artist() const, Copyright() const, Caption() const, CaptionAbstract() const, Title() const;
    ExifValue Headline() const, Keywords() const, UserComment() const, StarRating() const;

    // Place.
    ExifValue GPS() const, GPSAltitude() const, GPSSpeed() const, GPSDirection() const;
    ExifValue LocationName() const, MapView() const, Map() const;

private:
    void takeHeadlineValues();
    void takeDateTaken();
    void findOutWhetherScreenShot();

    std::int64_t _mediaType = 0;
    std::shared_ptr<ExifInformation> _editedEXIFInfo;
    NotificationCenter::Observation _memoryWarningObservation;
};

} // namespace exifcard
