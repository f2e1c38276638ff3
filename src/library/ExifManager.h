#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/URL.h"
#include "platform/foundation/Value.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class DateFormatter;
class ExifInformation;
class UIImage;

/// A part of a fetch result: `length` assets from `location` on.
struct AssetRange {
    std::size_t location = 0;
    std::size_t length = 0;
};

/// Reads the metadata of photos, from files and from the photo library. Every operation runs on the calling
/// thread, but where a completion is told to come from another, and decodes no pixel, but for a picture in
/// memory.
class ExifManager {
public:
    using Record = std::shared_ptr<ExifInformation>;
    using Records = std::vector<Record>;
    using RecordHandler = std::function<void(const Record& record)>;
    using RecordsHandler = std::function<void(const Records& records)>;
    /// Told of one asset's download, on any thread but the main one.
    /// @param progress  0 … 1.
    /// @param stop      Set true to cancel.
    /// @param isDownloading  False in the last call, which comes with 1, an error or none, and no info.
    using AssetProgressHandler = std::function<void(double progress,
        const std::optional<PHError>& error,
        bool& stop,
        const DictionaryPtr& info,
        bool isDownloading)>;
    /// Told of the downloads of many assets together.
    /// @param isDownloading  Some asset is part-way.
    /// @param progress       0 … 1, the mean of all.
    using BatchProgressHandler = std::function<void(bool isDownloading, float progress)>;

    static const ExifManager& sharedInstance();
    ExifManager(const ExifManager&) = delete;
    ExifManager& operator=(const ExifManager&) = delete;

    /// The reader of dates in metadata: "yyyy:MM:dd HH:mm:ss", without any user's conventions.
    const DateFormatter& dateFormatter() const;

    /// The image properties dictionary of the first image, the caller's to change.
    /// @return Null for no source, or one without properties.
    static DictionaryPtr metadataFromImageSource(const CGImageSourcePtr& imageSource);
    /// The same of an image file's bytes; null for none.
    static DictionaryPtr metadataFromImageData(const std::optional<Data>& imageData);
    /// The same of a file; null for an empty URL.
    static DictionaryPtr metadataFromImageURL(const URL& imageURL);

    /// The record of an image properties dictionary, with the place that its {GPS} gives. Null makes a
    /// record without metadata. Like all records below, never null.
    static std::shared_ptr<ExifInformation> exifInformationWithMetadataDict(const DictionaryPtr& metadata);
    /// The record of an image file's bytes, which it keeps.
    static std::shared_ptr<ExifInformation> exifInformationFromNSData(const std::optional<Data>& imageData);
    /// The record of a file, with a thumbnail that is made when it is first drawn.
    static std::shared_ptr<ExifInformation> exifinformationFromNSURL(const URL& url);
    /// The record of the file at a path, without its place, size and thumbnail.
    static std::shared_ptr<ExifInformation> exifInformationForImageFileAtPath(const std::string& path);
    /// The record of a picture in memory: its size and colours, for no other metadata is left. Decodes it.
    static std::shared_ptr<ExifInformation> exifInformationFromImage(const std::shared_ptr<UIImage>& image);
    /// The record of a video file, with a frame as thumbnail that is decoded when it is first drawn. What
    /// cannot be read gives a record of a video of which nothing is known. Blocks; never on the main queue.
    static std::shared_ptr<ExifInformation> exifInformationFromVideoURL(const URL& url);
    /// The asset of a file in the device's own photo library; null for any other file, and while the library
    /// may not be read. Blocks on the disk.
    static PHAssetPtr assetInPhotosAppForFileWithURL(
        const URL& url, const std::optional<Date>& withCreationDate);

    /// The record of an asset, with what its bytes and the library tell. An original that lies elsewhere is
    /// brought here only when `forceDownload` is true; else, and when that fails, the record is marked as in
    /// the cloud. A null asset gives such a record too. Blocks, maybe on the network; never on the main
    /// queue.
    /// @param progressHandler  May be empty. Told of the download of a photo, and once at the end.
    static Record exifInformationFromPHAssett(const PHAssetPtr& asset);
    static Record exifInformationFromPHAssett(
        const PHAssetPtr& asset, const AssetProgressHandler& progressHandler);
    static Record exifInformationFromPHAssett(
        const PHAssetPtr& asset, bool forceDownload, const AssetProgressHandler& progressHandler);
    /// A lighter record, from what lies here alone; the completion comes once, on the main queue.
    static void exifInformationFromPHAssettWithCompletionBlock(
        const PHAssetPtr& asset, RecordHandler completionBlock);

    /// Reads all metadata from the asset's file at full size. The completion comes once: with a new record
    /// on `completeEXIFFetchingQueue`, or with the same one where there is no such file; at once on the
    /// calling thread when that lies elsewhere and may not be brought.
    static void fetchCompleteExifInformationsFor(const Record& record, RecordHandler completionBlock);
    static void fetchCompleteExifInformationsFor(
        const Record& record, bool forceDownload, RecordHandler completionBlock);

    /// The records of a range, in its order, one asset after the other. Blocks; never on the main queue. The
    /// completion is called before it returns.
    static void exifDataArrayInPHFetchResults(
        const PHAssetFetchResultPtr& fetchResult, AssetRange range, const RecordsHandler& completionBlock);
    static void exifDataArrayInPHFetchResults(const PHAssetFetchResultPtr& fetchResult,
        AssetRange range,
        const BatchProgressHandler& progressHandler,
        const RecordsHandler& completionBlock);
    /// The lighter records of at most the first 1000 assets that fit a predicate, an empty one fitting all.
    /// The completion comes once, on the main queue. A predicate that cannot be read gives no record and one
    /// log line.
    /// @param sortBy     Intended: not used, the records are sorted by `dateCreated`.
    /// @param ascending  Intended: true puts the latest first.
    static void allExifDataArrayInPHFetchResult(const PHAssetFetchResultPtr& fetchResult,
        std::string_view predicates,
        std::uint64_t sortBy,
        bool ascending,
        RecordsHandler completionBlock);
    // NOLINTBEGIN(readability-identifier-naming): given names, as far as C++ lets a name begin with "_".
    /// Builds the lighter records of a range in chunks of 300 onto `exifDataArray`, until that holds
    /// `range.length`. Within a chunk they stand as they became ready. The completion comes on the main
    /// queue.
    static void _exifDataArrayInPHFetchResults(const PHAssetFetchResultPtr& fetchResult,
        const std::shared_ptr<Records>& exifDataArray,
        AssetRange range,
        RecordsHandler completionBlock);
    /// One chunk; the same of the completion.
    static void _exifDataArrayInPHFetchResults(
        const PHAssetFetchResultPtr& fetchResult, AssetRange range, RecordsHandler completionBlock);
    // NOLINTEND(readability-identifier-naming)
    /// Those that the location filter and the hiding of photos without EXIF in the settings let through.
    static Records exifDataItemsArrayAndFilterFromExifArray(const Records& records);

private:
    ExifManager() = default;
};

} // namespace exifcard
