#include "cards/CardPicture.h"

#include "categories/PHAssetResource+Extension.h"
#include "categories/UIImage+Resize.h"
#include "metadata/ExifInformation.h"
#include "platform/foundation/PlatformException.h"
#include "platform/imageio/ImageDrawing.h"
#include "platform/photos/PHAsset.h"
#include "platform/uivalues/UIScreen.h"
#include "settings/PersistanceManager.h"

#include <algorithm>
#include <cmath>

namespace exifcard {
namespace {

constexpr int kMebibyteBits = 20;
/// More whole mebibytes than these are never decoded for a list.
constexpr std::size_t kMostMebibytes = 50;

bool isNetworkAccessAllowed(const ExifInformation& record) {
    return PersistanceManager::sharedInstance().allowNetworkAccessToDownloadPhotos() ||
           record.hasForceDownloadedImageResultFromCloud;
}

} // namespace

PHImageRequestOptions optionsOfSizedPicture(const ExifInformation& record) {
    PHImageRequestOptions options;
    options.networkAccessAllowed = isNetworkAccessAllowed(record);
    options.deliveryMode = record.hasForceDownloadedImageResultFromCloud
                               ? PHImageRequestOptionsDeliveryMode::HighQualityFormat
                               : PHImageRequestOptionsDeliveryMode::Opportunistic;
    options.resizeMode = PHImageRequestOptionsResizeMode::Exact;
    return options;
}

PHImageRequestOptions optionsOfPictureData(const ExifInformation& record) {
    PHImageRequestOptions options;
    options.networkAccessAllowed = isNetworkAccessAllowed(record);
    options.deliveryMode = PHImageRequestOptionsDeliveryMode::HighQualityFormat;
    options.resizeMode = PHImageRequestOptionsResizeMode::Fast;
    return options;
}

bool isTooLargeToDecode(const Data& data) {
    return data.size() >> kMebibyteBits > kMostMebibytes;
}

CGSize sizeOfHugePicture() {
    const UIScreen& screen = UIScreen::mainScreen();
    const double side =
        std::max(screen.sizeInPoints.width, screen.sizeInPoints.height) * std::trunc(screen.scale);
    return {side, side};
}

std::optional<std::shared_ptr<UIImage>> pictureScaledToFit(const Data& data, CGSize size) {
    try {
        const auto picture = imageWithData(data);
        if (!picture || picture->size() == CGSize{}) {
            return std::nullopt;
        }
        return imageWithImageScaledToFitToSize(picture, size);
    } catch (const PlatformException&) {
        return nullptr;
    }
}

std::string assetIdentifierOf(const ExifInformation* record) {
    return record && record->phAsset ? record->phAsset->localIdentifier : std::string();
}

std::string originalFilenameOf(const std::shared_ptr<const PHAsset>& asset) {
    for (const auto type : {PHAssetResourceType::Photo, PHAssetResourceType::Video}) {
        if (const auto resource = assetResourcesForAsset(asset, type)) {
            return resource->originalFilename;
        }
    }
    return {};
}

} // namespace exifcard
