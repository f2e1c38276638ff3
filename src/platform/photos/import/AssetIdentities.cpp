#include "platform/photos/import/AssetIdentities.h"

#include "platform/foundation/Data.h"
#include "platform/photos/CatalogueWriter.h"
#include "platform/photos/import/Fingerprint.h"
#include "platform/photos/import/LibraryPlaces.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

std::int64_t wholeFingerprintOf(const std::string& path) {
    const auto content = Data::mappedFile(path);
    return content ? wholeFingerprint(*content) : 0;
}

/// Of equal files, the one that kept its name is the likelier one.
std::optional<CatalogueFile> likeliestOf(const std::vector<CatalogueFile>& files, std::string_view name) {
    const auto sameName = std::ranges::find(files, name, &CatalogueFile::name);
    if (sameName != files.end()) {
        return *sameName;
    }
    return files.empty() ? std::nullopt : std::optional(files.front());
}

} // namespace

bool isPrimary(const CatalogueFile& file) {
    return file.type == PHAssetResourceType::Photo || file.type == PHAssetResourceType::Video;
}

AssetIdentity AssetIdentities::identityOf(
    const ReadAsset& read, const std::string& folder, std::int64_t folderNumber) {
    AssetIdentity identity = identityOfPrimary(read.primary, folder, folderNumber);
    for (const auto* const other : {&read.raw, &read.video}) {
        if (identity.asset != 0 || !*other) {
            continue;
        }
        // The other half came first and was an asset of its own until now.
        const auto occupant = _writer.fileInFolder(folderNumber, (*other)->file.name);
        if (occupant && isPrimary(*occupant) && !occupant->isVanished) {
            identity.asset = occupant->asset;
        }
    }
    return identity;
}

AssetIdentity AssetIdentities::identityOfPrimary(
    const ReadFile& primary, const std::string& folder, std::int64_t folderNumber) {
    const auto occupant = _writer.fileInFolder(folderNumber, primary.file.name);
    if (occupant && isPrimary(*occupant) && occupant->quickFingerprint == primary.quickFingerprint) {
        return {.asset = occupant->asset,
            .wholeFingerprint = occupant->wholeFingerprint,
            .isReturned = occupant->isVanished};
    }
    const auto [former, whole] = formerPlace(primary, folder);
    if (former) {
        if (occupant) {
            clearPlace(*occupant, folder);
        }
        return {.asset = former->asset,
            .wholeFingerprint = whole,
            .isMoved = true,
            .isReturned = former->isVanished};
    }
    const std::int64_t edited = occupant ? inheritedAsset(*occupant) : 0;
    return {.asset = edited, .wholeFingerprint = whole, .isReturned = edited != 0 && occupant->isVanished};
}

AssetIdentities::FormerPlace AssetIdentities::formerPlace(const ReadFile& file, const std::string& folder) {
    auto equals = equalFiles(file);
    // Clang 14 does not take what the form for ranges answers.
    const auto firstCopy = std::stable_partition(
        equals.begin(), equals.end(), [this](const CatalogueFile& equal) { return !liesInItsPlace(equal); });
    std::int64_t whole = equals.size() == 1 ? equals.front().wholeFingerprint : 0;
    if (equals.size() > 1 || firstCopy != equals.end()) {
        whole = wholeFingerprintOf(folder + "/" + file.file.name);
    }
    // While they can be read: they may be moved one day.
    std::for_each(firstCopy, equals.end(), [this](CatalogueFile& copy) { takeWholeFingerprint(copy); });
    equals.erase(firstCopy, equals.end());
    std::erase_if(equals, [&](const CatalogueFile& equal) {
        const bool isOther = equal.wholeFingerprint != 0 && equal.wholeFingerprint != whole;
        return isOther || isUnplugged(equal);
    });
    return {likeliestOf(equals, file.file.name), whole};
}

/// The primary files that may have the same content.
std::vector<CatalogueFile> AssetIdentities::equalFiles(const ReadFile& file) {
    auto equals = _writer.filesWithQuickFingerprint(file.quickFingerprint);
    std::erase_if(equals, [&](const CatalogueFile& equal) {
        return !isPrimary(equal) || equal.stamp.sizeInBytes != file.file.stamp.sizeInBytes;
    });
    return equals;
}

/// The asset of a file with new content: edited in its place, it stays what it was. The half of a pair goes
/// on alone as the pair did when the file that told which asset it was is gone.
std::int64_t AssetIdentities::inheritedAsset(const CatalogueFile& occupant) {
    if (isPrimary(occupant)) {
        return occupant.asset;
    }
    const auto asset = _writer.asset(occupant.asset);
    const auto isThere = [this](
                             const CatalogueFile& file) { return isPrimary(file) && liesInItsPlace(file); };
    return asset && std::ranges::none_of(asset->files, isThere) ? occupant.asset : 0;
}

bool AssetIdentities::liesInItsPlace(const CatalogueFile& file) const {
    const std::string folder = _places.pathOf(file.folder);
    return !folder.empty() && stampOfFile(folder + "/" + file.name) == file.stamp;
}

/// A file of a drive that is unplugged is not gone: what is found elsewhere is a copy of it.
bool AssetIdentities::isUnplugged(const CatalogueFile& file) const {
    const std::string folder = _places.pathOf(file.folder);
    const LibraryRoot* const root = _places.rootOf(folder);
    return root != nullptr && !file.isVanished && (!isFolderThere(root->path) || _places.isAway(folder));
}

void AssetIdentities::takeWholeFingerprint(CatalogueFile& file) {
    if (file.wholeFingerprint == 0) {
        file.wholeFingerprint = wholeFingerprintOf(_places.pathOf(file.folder) + "/" + file.name);
        _writer.storeFile(file);
    }
}

void AssetIdentities::clearPlace(CatalogueFile occupant, const std::string& folder) {
    occupant.name = fmt::format("{}/{}", occupant.name, occupant.number);
    _writer.storeFile(occupant);
    if (!occupant.isVanished) {
        _displaced.push_back({folder, std::move(occupant)});
    }
}

} // namespace exifcard
