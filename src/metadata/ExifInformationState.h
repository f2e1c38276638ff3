#pragma once

#include "metadata/AtomicProperty.h"
#include "metadata/ExifValue.h"
#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/Date.h"
#include "platform/foundation/URL.h"
#include "platform/foundation/Value.h"
#include "platform/uivalues/CGGeometry.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class BlockOperation;
class ExifInformation;
class UIImage;
struct PHAsset;

/// What a record knows: plain properties, unset until whoever reads the photo
/// sets them. Numbers are kept as the objects they were stored as; nothing is unset.
///
/// The record has no lock. Only the atomic properties may be read while a fetch
/// on another queue writes them.
struct ExifInformationState {
    // Metadata sources. The sub-dictionaries are the very objects of the image properties dictionary.
    DictionaryPtr metaDataDictionary; ///< The whole of it, in a container of the record's own.
    DictionaryPtr exifDic;
    DictionaryPtr tifDic;
    DictionaryPtr gpsDic;
    DictionaryPtr iptcDic;
    ArrayPtr keywordsArray;                    ///< IPTC keywords; null without {IPTC}, else a list.
    DictionaryPtr cachedPHAssetInfoDictionary; ///< What came with the asset's image data.

    // Headline values.
    std::optional<std::string> cameraModel; ///< The text of the `Model` row.
    Value aperture_fStop;
    Value shutterSpeedExposureTimeInSeconds; ///< Single precision; 0 when the photo has none.
    Value iSOSpeed;                          ///< An integer; 0 when the photo has none.
    Value focalLengthInmm;
    std::int64_t flashStatusCode = 0;
    CGSize dimensions;                                      ///< Stored pixels, before orientation.
    std::optional<Date> dateTaken;                          ///< From {Exif} DateTimeOriginal.
    std::optional<Date> dateCreated;                        ///< The asset's.
    std::int64_t fileSizeInBytes = 0;                       ///< Of the image resource.
    std::atomic<std::int64_t> liveVideoFileSizeInBytes = 0; ///< Of a live photo's paired video, as it comes.
    double duration = 0;                                    ///< Seconds; 0 for photos.
    float framesPerSecondValue = 0;                         ///< 0 for photos.
    std::optional<CLLocation> location;
    std::optional<std::string> locationName; ///< The place, once it was looked up.
    AtomicProperty<std::optional<std::string>> fileNameCached;

    // Intended: part of the record, but nothing fills them; the rows read the dictionaries.
    std::optional<std::string> cameraMaker;
    std::optional<std::string> cameraSubject;
    std::optional<std::string> meteringMode;
    std::optional<std::string> flashMode;
    std::optional<Date> dateModified;
    Value exposureBias;
    Value rating;
    bool editedChanges = false;

    // Flags.
    bool exifInfoAvailable = false;       ///< {Exif} holds a focal length, an f-number or an exposure time.
    bool exifORTiffInfoAvailable = false; ///< There is an {Exif} or a {TIFF} dictionary.
    bool isScreenShot = false; ///< No usable EXIF, and exactly the screen's pixels either way round.
    bool isRAWFile = false;
    std::atomic<bool> hasFetchedFromPHAsset = false;
    std::atomic<bool> hasFetchedEXIFInformation = false;
    bool isFetchingFullInfo = false;
    bool didFetchedFullInfo = false;

    // The original in the cloud.
    std::atomic<bool> imageResultIsInCloud = true; ///< Until the fetch finds the image on this machine.
    bool hasForceDownloadedImageResultFromCloud = false;
    bool hasFinishedDownloadingImageResultFromCloud = false;
    double iCloudDownloadProgress = -1; ///< 0 to 1; -1 while no download runs.

    // Asset, file and pictures.
    std::shared_ptr<const PHAsset> phAsset;
    std::optional<Data> imageData; ///< The image file's bytes while they are needed.
    std::optional<std::string> imageFilePath;
    URL imageFilePathURL; ///< Empty when unset.
    std::shared_ptr<UIImage> thumbNailImage;
    std::shared_ptr<UIImage> cachedThumbNailImage; ///< Dropped on a memory warning.
    std::shared_ptr<UIImage> fullResolutionTempImage;

    // The running prefetch of the thumbnail.
    std::int32_t imageRequestID = 0;
    /// Takes the image data, or nothing, and the request's info; emptied to cancel.
    std::function<void(const std::optional<Data>& imageData, const DictionaryPtr& info)>
        imageFetchCompletionHandler;
    std::shared_ptr<BlockOperation> imageScaleDownOperation;

    // Edits.
    AtomicProperty<std::shared_ptr<ExifInformation>>
        photosAppEditedVersion;               ///< Of the edited rendition, if any.
    std::vector<ExifValue> editedValuesArray; ///< In the order of their first edit, one a field key.
};

} // namespace exifcard
