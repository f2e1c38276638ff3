#include "platform/avfoundation/AVAsset.h"

#include "platform/avfoundation/MetadataEntries.h"
#include "platform/avfoundation/VideoModule.h"
#include "platform/foundation/Log.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace exifcard {
namespace {

constexpr std::int32_t kMicrosecondsInASecond = 1'000'000;

AVAssetTrack trackOf(VideoTrack&& track) {
    return {.mediaType = std::move(track.mediaType),
        .naturalSize = track.naturalSize,
        .nominalFrameRate = track.frameRate,
        .preferredTransform = track.toShow,
        .isDecodable = track.isDecodable};
}

} // namespace

std::shared_ptr<const AVURLAsset> AVURLAsset::assetWithURL(const URL& url) {
    auto file = url.isEmpty() ? std::nullopt : Data::mappedFile(url.path());
    auto facts = file ? videoFacts(file->bytes()) : std::nullopt;
    if (!facts || file->wasCutShort()) {
        debugLog("AVFoundation: %@: not a video of a known kind, or damaged", {url.path()});
        return nullptr;
    }
    const std::shared_ptr<AVURLAsset> asset(new AVURLAsset);
    asset->_url = url;
    asset->_file = std::move(*file);
    if (facts->durationInMicroseconds) {
        asset->_duration = {*facts->durationInMicroseconds, kMicrosecondsInASecond};
    }
    std::ranges::transform(facts->tracks, std::back_inserter(asset->_tracks),
        [](VideoTrack& track) { return trackOf(std::move(track)); });
    asset->_metadata = metadataItems(facts->entries);
    const auto creationTime =
        std::ranges::find(facts->entries, "creation_time", &std::pair<std::string, std::string>::first);
    asset->_headerCreationTime = creationTime != facts->entries.end() ? creationTime->second : "";
    return asset;
}

std::vector<AVAssetTrack> AVURLAsset::tracksWithMediaType(std::string_view mediaType) const {
    std::vector<AVAssetTrack> found;
    std::ranges::copy_if(_tracks, std::back_inserter(found),
        [mediaType](const AVAssetTrack& track) { return track.mediaType == mediaType; });
    return found;
}

std::optional<AVMetadataItem> AVURLAsset::creationDate() const {
    const auto item =
        std::ranges::find(_metadata, AVMetadataCommonKeyCreationDate, &AVMetadataItem::commonKey);
    return item != _metadata.end() ? std::optional(*item) : std::nullopt;
}

} // namespace exifcard
