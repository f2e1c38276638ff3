#include "library/ExifManager.h"

#include "categories/UIImage+Resize.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/PlatformException.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/imageio/ImageProperties.h"

namespace exifcard {
namespace {

CGImageSourcePtr imageSourceOfFile(const URL& url) {
    return url.isEmpty() ? nullptr : CGImageSourceCreateWithURL(url);
}

/// The length of the file in bytes, which is asked and not read; 0 without a source.
std::int64_t sizeOfSource(const CGImageSourcePtr& source) {
    return source ? static_cast<std::int64_t>(CGImageSourceGetData(*source).size()) : 0;
}

void logImageCount(const CGImageSource& source) {
    if (isDebugLogWanted()) { // Counting may read far into the file.
        debugLog("ImageSource Count %ld", {CGImageSourceGetCount(source)});
    }
}

/// −1 where the reference is the one letter that turns the angle round, in either case; else 1.
double signOfReference(const Value& reference, std::string_view upperCase, std::string_view lowerCase) {
    const std::string* const letter = reference.text();
    return letter != nullptr && (*letter == upperCase || *letter == lowerCase) ? -1 : 1;
}

CLLocation locationFromGPS(const Dictionary& gps) {
    const auto number = [&gps](std::string_view key) { return gps.objectForKey(key).doubleValue(); };
    const auto& latitudeReference = gps.objectForKey(kCGImagePropertyGPSLatitudeRef);
    const auto& longitudeReference = gps.objectForKey(kCGImagePropertyGPSLongitudeRef);
    // Intended: the altitude is not negative below the sea, the speed stays in the file's unit, and the
    // timestamp stays empty whatever the file tells.
    return CLLocation{
        .coordinate = {signOfReference(latitudeReference, "S", "s") * number(kCGImagePropertyGPSLatitude),
            signOfReference(longitudeReference, "W", "w") * number(kCGImagePropertyGPSLongitude)},
        .altitude = number(kCGImagePropertyGPSAltitude),
        .horizontalAccuracy = 0,
        .verticalAccuracy = 0,
        .course = number(kCGImagePropertyGPSImgDirection),
        .speed = number(kCGImagePropertyGPSSpeed),
        .timestamp = std::nullopt};
}

/// The thumbnail, or null when there is none to be had.
std::shared_ptr<UIImage> thumbnailOfSource(const CGImageSourcePtr& source, const DictionaryPtr& metadata) {
    try {
        return thumbNailImageFromImageSource(source, metadata);
    } catch (const PlatformException&) {
        return nullptr;
    }
}

} // namespace

DictionaryPtr ExifManager::metadataFromImageSource(const CGImageSourcePtr& imageSource) {
    if (!imageSource) {
        return nullptr;
    }
    try {
        logImageCount(*imageSource);
        // Intended: without properties there is nothing, even where the file has an XMP packet.
        return CGImageSourceCopyPropertiesAtIndex(*imageSource, 0);
    } catch (const PlatformException&) {
        return nullptr;
    }
}

DictionaryPtr ExifManager::metadataFromImageData(const std::optional<Data>& imageData) {
    return imageData ? metadataFromImageSource(CGImageSourceCreateWithData(*imageData)) : nullptr;
}

DictionaryPtr ExifManager::metadataFromImageURL(const URL& imageURL) {
    return metadataFromImageSource(imageSourceOfFile(imageURL));
}

std::shared_ptr<ExifInformation> ExifManager::exifInformationWithMetadataDict(const DictionaryPtr& metadata) {
    auto record = ExifInformation::exifInformationFromMetaDataDictionary(metadata);
    const Dictionary* const gps =
        metadata ? metadata->objectForKey(kCGImagePropertyGPSDictionary).dictionaryView() : nullptr;
    record->location = gps != nullptr ? std::optional(locationFromGPS(*gps)) : std::nullopt;
    return record;
}

std::shared_ptr<ExifInformation> ExifManager::exifInformationFromNSData(
    const std::optional<Data>& imageData) {
    const auto source = imageData ? CGImageSourceCreateWithData(*imageData) : nullptr;
    const auto metadata = metadataFromImageSource(source);
    auto record = exifInformationWithMetadataDict(metadata);
    if (source) {
        record->thumbNailImage = imageWithSource(*source, metadata);
        record->imageData = imageData;
        record->fileSizeInBytes = sizeOfSource(source);
    }
    return record;
}

std::shared_ptr<ExifInformation> ExifManager::exifinformationFromNSURL(const URL& url) {
    debugLog("exifinformationFromNSURL %@", {url.absoluteString()});
    const auto source = imageSourceOfFile(url); // The one mapping of the file, for all that follows.
    const auto metadata = metadataFromImageSource(source);
    auto record = exifInformationWithMetadataDict(metadata);
    record->imageResultIsInCloud = false;
    record->fileSizeInBytes = sizeOfSource(source);
    record->imageFilePathURL = url;
    if (!record->thumbNailImage) {
        record->thumbNailImage = thumbnailOfSource(source, metadata);
    }
    return record;
}

std::shared_ptr<ExifInformation> ExifManager::exifInformationForImageFileAtPath(const std::string& path) {
    const auto source = CGImageSourceCreateWithURL(URL::fileURLWithPath(path));
    auto record = ExifInformation::exifInformationFromMetaDataDictionary(
        source ? CGImageSourceCopyPropertiesAtIndex(*source, 0) : nullptr);
    record->imageFilePath = path;
    record->imageFilePathURL = URL::withString(path); // Intended: the path as it stands, no file URL.
    return record;
}

std::shared_ptr<ExifInformation> ExifManager::exifInformationFromImage(
    const std::shared_ptr<UIImage>& image) {
    auto record = ExifInformation::exifInformationFromMetaDataDictionary(
        metadataFromImageData(image ? std::optional(UIImagePNGRepresentation(*image)) : std::nullopt));
    record->imageResultIsInCloud = false;
    record->thumbNailImage = image;
    return record;
}

} // namespace exifcard
