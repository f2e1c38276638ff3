#include "platform/photos/import/AssetStore.h"

#include "platform/photos/CatalogueWriter.h"
#include "platform/photos/import/LibraryPlaces.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace exifcard {
namespace {

constexpr double kNanosecondsPerSecond = 1e9;

Date dateOfStamp(std::int64_t nanoseconds) {
    return {static_cast<double>(nanoseconds) / kNanosecondsPerSecond};
}

PHAssetResourceType primaryType(const ReadAsset& asset) {
    return asset.primary.facts.mediaType == PHAssetMediaType::Video ? PHAssetResourceType::Video
                                                                    : PHAssetResourceType::Photo;
}

bool isLivePhoto(const ReadAsset& asset) {
    return asset.video || asset.primary.facts.embeddedVideo;
}

PHAssetPlaybackStyle playbackStyleOf(const ReadAsset& asset) {
    const MediaFacts& facts = asset.primary.facts;
    if (facts.mediaType == PHAssetMediaType::Video) {
        return PHAssetPlaybackStyle::Video;
    }
    if (isLivePhoto(asset)) {
        return PHAssetPlaybackStyle::LivePhoto;
    }
    return facts.isAnimated ? PHAssetPlaybackStyle::ImageAnimated : PHAssetPlaybackStyle::Image;
}

PHAsset propertiesOf(const ReadAsset& asset) {
    const MediaFacts& facts = asset.primary.facts;
    const Date modified = dateOfStamp(asset.primary.file.stamp.modified);
    PHAsset properties;
    properties.mediaType = facts.mediaType;
    properties.mediaSubtypes = facts.mediaSubtypes | (isLivePhoto(asset) ? kPHAssetMediaSubtypePhotoLive : 0);
    properties.pixelWidth = facts.pixelWidth;
    properties.pixelHeight = facts.pixelHeight;
    properties.creationDate = facts.captureDate.value_or(modified);
    properties.modificationDate = modified;
    properties.location = facts.location;
    properties.duration = facts.duration;
    properties.playbackStyle = playbackStyleOf(asset);
    return properties;
}

CatalogueFile fileOf(const ReadFile& read, std::int64_t folder, PHAssetResourceType type) {
    CatalogueFile file;
    file.folder = folder;
    file.name = read.file.name;
    file.type = type;
    file.uniformTypeIdentifier = read.facts.typeIdentifier;
    file.stamp = read.file.stamp;
    file.quickFingerprint = read.quickFingerprint;
    file.orientation = read.facts.orientation;
    file.contentIdentifier = read.facts.contentIdentifier;
    if (const auto& video = read.facts.embeddedVideo) {
        file.embeddedVideoOffset = video->offset;
        file.embeddedVideoLength = video->length;
    }
    return file;
}

CatalogueFile sidecarFileOf(const ScannedFile& sidecar, std::int64_t folder) {
    CatalogueFile file;
    file.folder = folder;
    file.name = sidecar.name;
    file.type = kSidecarFile;
    file.stamp = sidecar.stamp;
    return file;
}

std::vector<CatalogueFile> filesOf(const ReadAsset& read, std::int64_t folder) {
    std::vector<CatalogueFile> files = {fileOf(read.primary, folder, primaryType(read))};
    if (read.raw) {
        files.push_back(fileOf(*read.raw, folder, PHAssetResourceType::AlternatePhoto));
    }
    if (read.video) {
        files.push_back(fileOf(*read.video, folder, PHAssetResourceType::PairedVideo));
    }
    for (const ScannedFile& sidecar : read.sidecars) {
        files.push_back(sidecarFileOf(sidecar, folder));
    }
    return files;
}

} // namespace

void AssetStore::store(const ReadAsset& read, const std::string& folder) {
    const std::int64_t number = _places.store(folder);
    const AssetIdentity identity = _identities.identityOf(read, folder, number);
    CatalogueAsset asset{.number = identity.asset,
        .properties = propertiesOf(read),
        .title = read.primary.facts.title,
        .rating = read.primary.facts.rating,
        .files = filesOf(read, number)};
    const bool isRaw = read.raw || read.primary.file.kind == FileKind::Raw;
    asset.traits = isRaw ? kAssetTraitRAW : 0;
    asset.files.front().wholeFingerprint = identity.wholeFingerprint;
    chooseForBurst(asset, read.primary.facts.burstIdentifier);
    if (isKnownAsItIs(asset)) {
        return;
    }
    if (!joinOtherHalf(asset)) {
        absorb(asset);
        _writer.storeAsset(asset);
        count(identity);
    }
}

/// One file of a group that cannot be read has the others read again and again, and nothing is new of them.
bool AssetStore::isKnownAsItIs(const CatalogueAsset& asset) {
    const auto known = asset.number != 0 ? _writer.asset(asset.number) : std::nullopt;
    return known && std::ranges::is_permutation(
                        known->files, asset.files, [](const CatalogueFile& before, const CatalogueFile& now) {
                            return !before.isVanished && before.folder == now.folder &&
                                   before.name == now.name && before.type == now.type &&
                                   before.stamp == now.stamp;
                        });
}

/// An asset whose one file becomes a part of this one has none left.
void AssetStore::absorb(const CatalogueAsset& asset) {
    for (std::size_t index = 1; index < asset.files.size(); ++index) {
        const CatalogueFile& file = asset.files[index];
        const auto former = _writer.fileInFolder(file.folder, file.name);
        if (former && isPrimary(*former) && former->asset != asset.number) {
            _absorbed.push_back(former->asset);
        }
    }
}

/// Pictures of one burst are one picture in lists: the first that comes in stands for all of them.
void AssetStore::chooseForBurst(CatalogueAsset& asset, const std::string& burst) {
    if (burst.empty()) {
        return;
    }
    asset.properties.burstIdentifier = burst;
    const std::int64_t chosen = _writer.assetRepresentingBurst(burst);
    asset.properties.representsBurst = chosen == 0 || chosen == asset.number;
}

/// Halves of a live photo that have different names find each other by their content identifier.
/// @return Whether the asset became a part of another one.
bool AssetStore::joinOtherHalf(CatalogueAsset& asset) {
    const CatalogueFile& own = asset.files.front();
    if (own.contentIdentifier.empty() || asset.properties.playbackStyle == PHAssetPlaybackStyle::LivePhoto) {
        return false;
    }
    const bool isPicture = own.type == PHAssetResourceType::Photo;
    for (const CatalogueFile& other : _writer.filesWithContentIdentifier(own.folder, own.contentIdentifier)) {
        const bool isOtherPicture = other.type == PHAssetResourceType::Photo;
        const bool isFree =
            other.name != own.name && isOtherPicture != isPicture && _identities.liesInItsPlace(other);
        if (isFree && isPicture) {
            addMovingHalf(asset, other);
            return false;
        }
        if (isFree && other.asset != asset.number) {
            return joinPicture(other.asset, asset);
        }
    }
    return false;
}

void AssetStore::addMovingHalf(CatalogueAsset& picture, CatalogueFile video) {
    video.type = PHAssetResourceType::PairedVideo;
    picture.properties.mediaSubtypes |= kPHAssetMediaSubtypePhotoLive;
    picture.properties.playbackStyle = PHAssetPlaybackStyle::LivePhoto;
    picture.files.push_back(std::move(video));
}

bool AssetStore::joinPicture(std::int64_t number, const CatalogueAsset& video) {
    auto picture = _writer.asset(number);
    if (!picture || picture->properties.playbackStyle == PHAssetPlaybackStyle::LivePhoto) {
        return false;
    }
    addMovingHalf(*picture, video.files.front());
    absorb(*picture);
    _writer.storeAsset(*picture);
    ++_counts.changed;
    return true;
}

void AssetStore::count(const AssetIdentity& identity) {
    std::size_t& counter = identity.asset == 0   ? _counts.added
                           : identity.isReturned ? _counts.returned
                           : identity.isMoved    ? _counts.moved
                                                 : _counts.changed;
    ++counter;
}

void AssetStore::forget(std::vector<MissingFile> missing) {
    std::ranges::move(_identities.takeDisplaced(), std::back_inserter(missing));
    std::set<std::int64_t> missingFiles;
    std::set<std::int64_t> assets;
    for (const MissingFile& lost : missing) {
        const auto row = _writer.fileInFolder(lost.file.folder, lost.file.name);
        if (row && row->number == lost.file.number && row->asset == lost.file.asset && !row->isVanished) {
            missingFiles.insert(row->number);
            assets.insert(row->asset);
        }
    }
    std::vector<std::int64_t> vanished;
    for (const std::int64_t number : assets) {
        const auto asset = _writer.asset(number);
        if (asset && std::ranges::all_of(asset->files, [&](const CatalogueFile& file) {
                return missingFiles.contains(file.number) || file.type == kSidecarFile;
            })) {
            vanished.push_back(number);
        }
    }
    _writer.markVanished(_absorbed); // They left their only file to another asset.
    _absorbed.clear();
    _writer.markVanished(vanished);
    _counts.vanished += vanished.size();
}

} // namespace exifcard
