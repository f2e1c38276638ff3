#include "cli/PhotoFile.h"

#include "library/ExifManager.h"
#include "metadata/ExifInformation.h"
#include "platform/avfoundation/AVAsset.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/FileFault.h"
#include "platform/imageio/CGImageSource.h"
#include "platform/photos/PHAsset.h"

#include <filesystem>
#include <system_error>

namespace exifcard {
namespace {

bool isImage(const CGImageSource& source) {
    return !CGImageSourceGetType(source).empty();
}

/// The record of a video; null for what has no picture.
std::shared_ptr<ExifInformation> readVideo(const URL& url) {
    auto record = ExifManager::exifInformationFromVideoURL(url);
    return record->dimensions.width > 0 ? record : nullptr;
}

/// Why a regular file gave no metadata.
std::string causeInContent(const std::string& name) {
    const CGImageSourcePtr source = CGImageSourceCreateWithURL(urlOfFile(name));
    if (!source) {
        return "cannot be opened";
    }
    if (CGImageSourceGetData(*source).empty()) {
        return "is empty";
    }
    const bool isKnown = isImage(*source) || AVURLAsset::assetWithURL(urlOfFile(name));
    return isKnown ? "is damaged or cut short" : "is not an image or a video";
}

} // namespace

URL urlOfFile(const std::string& name) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(name, error);
    return URL::fileURLWithPath(error ? name : path.string());
}

std::shared_ptr<ExifInformation> readPhoto(const std::string& name) {
    const URL url = urlOfFile(name);
    auto record = ExifManager::exifinformationFromNSURL(url);
    if (record->metaDataDictionary) {
        return record;
    }
    const CGImageSourcePtr source = CGImageSourceCreateWithURL(url);
    const bool mayBeVideo = source && !isImage(*source) && !CGImageSourceGetData(*source).empty();
    return mayBeVideo ? readVideo(url) : nullptr;
}

bool isVideo(const ExifInformation& record) {
    return record.mediaType() == static_cast<std::int64_t>(PHAssetMediaType::Video);
}

std::string causeOfFailure(const std::string& name) {
    const std::string fault = faultOfFile(name);
    return fault.empty() ? causeInContent(name) : fault;
}

} // namespace exifcard
