#include "screens/RecordsOfChange.h"

#include "metadata/ExifInformation.h"
#include "screens/ExifDataListDataSource.h"

#include <algorithm>
#include <utility>

namespace exifcard {
namespace {

/// With more new photos than these a list begins anew.
constexpr std::size_t kMostInsertions = 100;

/// The end of what is loaded, as a position in the result after the change.
class LoadedEnd {
public:
    LoadedEnd(const ListedAssets& listed, const PHAssetChangeDetails& details)
        : _isEverythingLoaded(!listed.hasMore) {
        const auto removed = std::ranges::count_if(
            details.removedIndexes, [&](std::size_t index) { return index < listed.records.size(); });
        _position = listed.records.size() - static_cast<std::size_t>(removed);
    }

    /// Whether what stands there is for a later page.
    bool isBehind(std::size_t position) const { return !_isEverythingLoaded && _position <= position; }
    /// @param insertedIndex  Ascending from call to call.
    bool takeInsertion(std::size_t insertedIndex) {
        if (isBehind(insertedIndex)) {
            return false;
        }
        ++_position;
        return true;
    }

private:
    bool _isEverythingLoaded;
    std::size_t _position = 0;
};

bool isCrossing(const LoadedEnd& end, const PHAssetChangeDetails::Move& move) {
    return end.isBehind(move.from) != end.isBehind(move.to);
}

std::string identifierOf(const ExifManager::Record& record) {
    return record->phAsset ? record->phAsset->localIdentifier : std::string();
}

} // namespace

ListedAssets ListedAssets::ofDataSource(const ExifDataListDataSource& dataSource) {
    return {.fetchResult = dataSource.fetchResult,
        .records = dataSource.unFilteredExifDataItemsArray,
        .hasMore = dataSource.hasMoreExifObjects,
        .generation = dataSource.generation()};
}

std::unordered_set<std::string> ListedAssets::identifiers() const {
    std::unordered_set<std::string> found;
    for (const auto& record : records) {
        found.insert(identifierOf(record));
    }
    return found;
}

bool ListedAssets::isStillListed(const ExifDataListDataSource& dataSource) const {
    return generation == dataSource.generation() && fetchResult == dataSource.fetchResult &&
           records.size() == dataSource.unFilteredExifDataItemsArray.size() && !dataSource.isLoading();
}

RecordsOfChange RecordsOfChange::compare(const PHChange& change, ListedAssets listedAssets) {
    RecordsOfChange records;
    records.listed = std::move(listedAssets);
    const ListedAssets& listed = records.listed;
    const auto details =
        listed.fetchResult ? change.changeDetailsForFetchResult(listed.fetchResult) : std::nullopt;
    if (!details) {
        return records;
    }
    records.fetchResultAfterChanges = details->fetchResultAfterChanges;
    LoadedEnd end(listed, *details);
    const auto identifiers = listed.identifiers();
    records.hasBlankRecords = identifiers.contains(std::string());
    std::vector<PHAssetPtr> inserted;
    for (std::size_t position = 0; position < details->insertedIndexes.size(); ++position) {
        const bool isTaken = end.takeInsertion(details->insertedIndexes[position]);
        const auto& asset = details->insertedObjects[position];
        if (isTaken && asset && !identifiers.contains(asset->localIdentifier)) {
            inserted.push_back(asset);
        }
    }
    records.needsReload =
        !details->hasIncrementalChanges || details->insertedIndexes.size() > kMostInsertions ||
        std::ranges::any_of(details->moves, [&](const auto& move) { return isCrossing(end, move); });
    if (records.needsReload) {
        return records;
    }
    for (const PHAssetPtr& asset : details->removedObjects) {
        if (asset && identifiers.contains(asset->localIdentifier)) {
            records.removed.insert(asset->localIdentifier);
        }
    }
    for (const PHAssetPtr& asset : details->changedObjects) {
        if (asset && identifiers.contains(asset->localIdentifier)) {
            records.changed.emplace(asset->localIdentifier, ExifManager::exifInformationFromPHAssett(asset));
        }
    }
    for (const PHAssetPtr& asset : inserted) {
        records.inserted.push_back(ExifManager::exifInformationFromPHAssett(asset));
    }
    return records;
}

bool RecordsOfChange::apply(ExifDataListDataSource& dataSource) const {
    dataSource.fetchResult = fetchResultAfterChanges;
    if (isEmpty()) {
        return false;
    }
    auto all = dataSource.unFilteredExifDataItemsArray;
    all.insert(all.end(), inserted.begin(), inserted.end());
    for (auto& record : all) {
        if (const auto found = changed.find(identifierOf(record)); found != changed.end()) {
            record = found->second;
        }
    }
    std::erase_if(all, [this](const auto& record) {
        // What was deleted before its page was read has no asset. It stands in no result any more.
        return !record->phAsset || removed.contains(record->phAsset->localIdentifier);
    });
    dataSource.replaceRecords(std::move(all));
    return true;
}

} // namespace exifcard
