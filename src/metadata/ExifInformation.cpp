#include "metadata/ExifInformation.h"

#include "appearance/Apperance.h"
#include "metadata/ExifDateFormatter.h"
#include "metadata/RowParts.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/DateFormatter.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/photos/PHAsset.h"
#include "platform/uivalues/UIScreen.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

constexpr std::string_view kMemoryWarning = "UIApplicationDidReceiveMemoryWarningNotification";
/// What the path of an edited rendition has over that of the unedited file.
constexpr std::string_view kEditedRenditionPart = "/Adjustments/FullSizeRender";

/// The first ISO speed rating; only without a list of ratings the ISO speed.
std::int64_t sensitivityIn(const DictionaryPtr& exifDic) {
    const Value& ratings = objectIn(exifDic, kCGImagePropertyExifISOSpeedRatings);
    if (ratings.isNothing()) {
        return objectIn(exifDic, kCGImagePropertyExifISOSpeed).integerValue();
    }
    const Array* const list = ratings.arrayView();
    return list != nullptr ? list->firstObject().integerValue() : 0;
}

/// Whether {Exif} tells anything about how the photo was taken.
bool hasUsableEXIF(const DictionaryPtr& exifDic) {
    constexpr std::string_view keys[] = {
        kCGImagePropertyExifFocalLength, kCGImagePropertyExifFNumber, kCGImagePropertyExifExposureTime};
    return exifDic && std::ranges::any_of(keys, [&](auto key) { return exifDic->containsKey(key); });
}

/// The stored keywords; an empty list when what is stored is no list.
ArrayPtr keywordsIn(const Dictionary& iptcDic) {
    auto keywords = iptcDic.objectForKey(kCGImagePropertyIPTCKeywords).array();
    return keywords ? keywords : Array::make();
}

DictionaryPtr copyOf(const DictionaryPtr& dictionary) {
    return dictionary ? dictionary->copyWithItemsCopied() : Dictionary::make();
}

} // namespace

/// Only the record makes one, so that no record is without its observation.
class ExifInformation::Token {
    friend class ExifInformation;
    Token() = default;
};

ExifInformation::ExifInformation(Token) {
}

std::shared_ptr<ExifInformation> ExifInformation::init() {
    auto record = std::make_shared<ExifInformation>(Token());
    record->_memoryWarningObservation = NotificationCenter::defaultCenter().addObserver(
        kMemoryWarning, nullptr, [weakRecord = std::weak_ptr(record)](const Notification& notification) {
            if (const auto observer = weakRecord.lock()) {
                observer->handleMemoryWarning(notification);
            }
        });
    return record;
}

std::shared_ptr<ExifInformation> ExifInformation::exifInformationFromMetaDataDictionary(
    const DictionaryPtr& dictionary) {
    auto record = init();
    if (!dictionary) {
        return record;
    }
    record->exifDic = dictionary->objectForKey(kCGImagePropertyExifDictionary).dictionary();
    record->tifDic = dictionary->objectForKey(kCGImagePropertyTIFFDictionary).dictionary();
    record->iptcDic = dictionary->objectForKey(kCGImagePropertyIPTCDictionary).dictionary();
    record->gpsDic = dictionary->objectForKey(kCGImagePropertyGPSDictionary).dictionary();
    record->metaDataDictionary = dictionary->mutableCopy();
    record->exifORTiffInfoAvailable = record->exifDic || record->tifDic;
    record->exifInfoAvailable = hasUsableEXIF(record->exifDic);
    record->takeHeadlineValues();
    record->takeDateTaken();
    record->findOutWhetherScreenShot();
    record->updateKeywordsArray();
    return record;
}

void ExifInformation::takeHeadlineValues() {
    dimensions = {metaDataDictionary->objectForKey(kCGImagePropertyPixelWidth).floatValue(),
        metaDataDictionary->objectForKey(kCGImagePropertyPixelHeight).floatValue()};
    focalLengthInmm = objectIn(exifDic, kCGImagePropertyExifFocalLength);
    iSOSpeed = sensitivityIn(exifDic);
    shutterSpeedExposureTimeInSeconds = objectIn(exifDic, kCGImagePropertyExifExposureTime).floatValue();
    aperture_fStop = objectIn(exifDic, kCGImagePropertyExifFNumber);
    flashStatusCode = objectIn(exifDic, kCGImagePropertyExifFlash).integerValue();
    cameraModel = Model().exifValueReadableFormat;
}

void ExifInformation::takeDateTaken() {
    const Value& text = objectIn(exifDic, kCGImagePropertyExifDateTimeOriginal);
    dateTaken = text.text() != nullptr ? exifDateFormatter().dateFromString(*text.text()) : std::nullopt;
}

void ExifInformation::findOutWhetherScreenShot() {
    const CGSize points = Apperance::sharedInstance().mainScreenBounds.size;
    const double scale = UIScreen::mainScreen().scale;
    const CGSize upright = {points.width * scale, points.height * scale};
    const CGSize turned = {upright.height, upright.width};
    isScreenShot = !exifInfoAvailable && (dimensions == upright || dimensions == turned);
}

std::vector<std::shared_ptr<ExifInformation>> ExifInformation::exifInformationsArrayFrom(
    std::span<const std::shared_ptr<const PHAsset>> assets) {
    std::vector<std::shared_ptr<ExifInformation>> records;
    records.reserve(assets.size());
    for (const auto& asset : assets) {
        records.push_back(init());
        records.back()->phAsset = asset;
    }
    return records;
}

std::int64_t ExifInformation::mediaType() const {
    return phAsset ? static_cast<std::int64_t>(phAsset->mediaType) : _mediaType;
}

URL ExifInformation::correctedImageFilePathURL() const {
    std::string text = imageFilePathURL.absoluteString();
    auto found = text.find(kEditedRenditionPart);
    if (found == std::string::npos) {
        return imageFilePathURL;
    }
    for (; found != std::string::npos; found = text.find(kEditedRenditionPart, found)) {
        text.erase(found, kEditedRenditionPart.size());
    }
    return URL::withString(std::move(text));
}

void ExifInformation::handleMemoryWarning(const Notification& /*notification*/) {
    cachedThumbNailImage = nullptr;
}

std::shared_ptr<ExifInformation> ExifInformation::editedEXIFInfo() {
    if (_editedEXIFInfo) {
        return _editedEXIFInfo;
    }
    _editedEXIFInfo = init();
    auto& twin = *_editedEXIFInfo;
    twin.exifInfoAvailable = exifInfoAvailable;
    twin.exifORTiffInfoAvailable = exifORTiffInfoAvailable;
    twin.exifDic = copyExifDictionary();
    twin.tifDic = copyTIFFDictionary();
    twin.gpsDic = copyGPSDictionary();
    twin.iptcDic = copyIPTCDictionary();
    twin.keywordsArray = Value(keywordsArray).copied().array();
    twin.metaDataDictionary = copyMetadataDictionary();
    twin.location = location;
    twin.dateTaken = dateTaken;
    twin.dateCreated = dateCreated;
    // Intended: the asset's type, not the stored one; 0 without an asset.
    twin._mediaType = phAsset ? static_cast<std::int64_t>(phAsset->mediaType) : 0;
    return _editedEXIFInfo;
}

void ExifInformation::setEditedEXIFInfo(std::shared_ptr<ExifInformation> editedEXIFInfo) {
    _editedEXIFInfo = std::move(editedEXIFInfo);
}

void ExifInformation::addToEditedExifValues(ExifValue row) {
    const auto found = std::ranges::find(editedValuesArray, row.uniqueID, &ExifValue::uniqueID);
    if (found != editedValuesArray.end()) {
        *found = std::move(row);
    } else {
        editedValuesArray.push_back(std::move(row));
    }
}

void ExifInformation::updateKeywordsArray() {
    if (iptcDic) {
        keywordsArray = keywordsIn(*iptcDic);
    }
}

DictionaryPtr ExifInformation::copyExifDictionary() const {
    return copyOf(exifDic);
}

DictionaryPtr ExifInformation::copyTIFFDictionary() const {
    return copyOf(tifDic);
}

DictionaryPtr ExifInformation::copyIPTCDictionary() const {
    return copyOf(iptcDic);
}

DictionaryPtr ExifInformation::copyGPSDictionary() const {
    return copyOf(gpsDic);
}

DictionaryPtr ExifInformation::copyMetadataDictionary() const {
    return copyOf(metaDataDictionary);
}

} // namespace exifcard
