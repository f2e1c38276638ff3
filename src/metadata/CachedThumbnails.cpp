#include "metadata/CachedThumbnails.h"

#include "metadata/ExifInformation.h"
#include "platform/uivalues/UIImage.h"

#include <cstddef>
#include <deque>

namespace exifcard {
namespace {

/// Some hundred tiles of a phone's screen: those that are seen, and a few screens behind them.
constexpr std::size_t kMostBytes = std::size_t(24) << 20U;
constexpr std::size_t kBytesAPixel = 3;
/// What is not decoded holds its file mapped, of which the pages around the header are in memory.
constexpr std::size_t kBytesOfMappedFile = std::size_t(256) << 10U;

struct KeptThumbnail {
    std::weak_ptr<ExifInformation> record;
    std::weak_ptr<UIImage> picture;
    std::size_t bytes = 0;
};

std::size_t bytesOf(const UIImage& picture) {
    if (!picture.pixelSource()->isDecoded()) {
        return kBytesOfMappedFile;
    }
    return std::size_t(picture.storedWidth()) * std::size_t(picture.storedHeight()) * kBytesAPixel;
}

void drop(const KeptThumbnail& kept) {
    const auto record = kept.record.lock();
    if (record && record->cachedThumbNailImage == kept.picture.lock()) {
        record->cachedThumbNailImage = nullptr;
    }
}

} // namespace

void keepCachedThumbnail(
    const std::shared_ptr<ExifInformation>& record, const std::shared_ptr<UIImage>& picture) {
    static std::deque<KeptThumbnail> kept; // The one of the longest ago in front.
    static std::size_t keptBytes = 0;
    if (!record || record->cachedThumbNailImage == picture) {
        return;
    }
    record->cachedThumbNailImage = picture;
    if (picture) {
        kept.push_back({record, picture, bytesOf(*picture)});
        keptBytes += kept.back().bytes;
    }
    while (keptBytes > kMostBytes && kept.size() > 1) {
        drop(kept.front());
        keptBytes -= kept.front().bytes;
        kept.pop_front();
    }
}

} // namespace exifcard
