#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/URL.h"
#include "platform/foundation/Value.h"
#include "platform/imageio/CGImageSource.h"

#include <memory>
#include <optional>
#include <string>

namespace exifcard {

class DateFormatter;
class ExifInformation;
class UIImage;

/// Reads the metadata of photos. Every operation runs on the calling thread and
/// decodes no pixel, but for the one that is given a picture in memory.
class ExifManager {
public:
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

private:
    ExifManager() = default;
};

} // namespace exifcard
