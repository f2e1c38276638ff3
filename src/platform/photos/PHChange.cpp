#include "platform/photos/PHChange.h"

#include "platform/photos/AssetFetchResult.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CollectionFetchResult.h"
#include "platform/photos/ListDifference.h"
#include "platform/photos/PhotoCatalogue.h"

#include <map>
#include <unordered_set>
#include <utility>

namespace exifcard {
namespace {

/// More changes than these are not worth telling one by one.
constexpr std::size_t kMostTold = 10'000;

/// The assets that were touched after the change `since`; nothing when they are too many to tell.
std::optional<std::unordered_set<std::int64_t>> assetsChangedSince(
    PhotoCatalogue& catalogue, std::int64_t since) {
    std::unordered_set<std::int64_t> changed;
    const auto database = catalogue.connections().reader();
    if (!database) {
        return changed;
    }
    auto query = database->query("SELECT id FROM assets WHERE changed > ?", {since});
    while (query.step()) {
        changed.insert(query.integer(0));
        if (changed.size() > kMostTold) {
            return std::nullopt;
        }
    }
    return changed;
}

/// Positions in `after` of what changed and was there before.
std::vector<std::size_t> changedPositions(const NumberList& after,
    const std::vector<std::size_t>& inserted,
    const std::unordered_set<std::int64_t>& changed) {
    std::vector<std::size_t> positions;
    auto nextInserted = inserted.begin();
    for (std::size_t index = 0; index < after.count() && !changed.empty(); ++index) {
        const bool isNew = nextInserted != inserted.end() && *nextInserted == index;
        nextInserted += isNew ? 1 : 0;
        if (!isNew && changed.contains(after[index])) {
            positions.push_back(index);
        }
    }
    return positions;
}

template<class Details>
void takeDifference(Details& details, ListDifference difference) {
    details.removedIndexes = std::move(difference.removed);
    details.insertedIndexes = std::move(difference.inserted);
    for (const auto& [from, to] : difference.moves) {
        details.moves.push_back({from, to});
    }
}

template<class Details>
bool tellsNothing(const Details& details) {
    return details.hasIncrementalChanges && details.removedIndexes.empty() &&
           details.insertedIndexes.empty() && details.changedIndexes.empty() && details.moves.empty();
}

std::vector<std::int64_t> numbersAt(const NumberList& list, const std::vector<std::size_t>& positions) {
    std::vector<std::int64_t> numbers;
    for (const std::size_t position : positions) {
        numbers.push_back(list[position]);
    }
    return numbers;
}

bool isSame(const NumberList& a, const NumberList& b) {
    for (std::size_t index = 0; index < a.count() && index < b.count(); ++index) {
        if (a[index] != b[index]) {
            return false;
        }
    }
    return a.count() == b.count();
}

using Objects = std::vector<PHAssetCollectionPtr>;

Objects objectsAt(const Objects& objects, const std::vector<std::size_t>& positions) {
    Objects chosen;
    for (const std::size_t position : positions) {
        chosen.push_back(objects[position]);
    }
    return chosen;
}

/// Numbers the albums of two lists, the same album alike.
class AlbumNumbers {
public:
    NumberList numbersOf(const Objects& albums) {
        NumberList list;
        for (const PHAssetCollectionPtr& album : albums) {
            const auto next = static_cast<std::int64_t>(_numbers.size());
            list.append(_numbers.emplace(album->localIdentifier, next).first->second);
        }
        return list;
    }

private:
    std::map<std::string, std::int64_t, std::less<>> _numbers;
};

bool isAlike(const PHAssetCollection& a, const PHAssetCollection& b) {
    return a.localizedTitle == b.localizedTitle && a.estimatedAssetCount == b.estimatedAssetCount &&
           a.startDate == b.startDate && a.endDate == b.endDate;
}

/// Albums of both whose properties or contents differ.
std::vector<std::size_t> changedAlbums(const FetchedCollections& before, const FetchedCollections& after) {
    std::map<std::string_view, const PHAssetCollection*> known;
    for (const PHAssetCollectionPtr& album : before.collections) {
        known.emplace(album->localIdentifier, album.get());
    }
    std::vector<std::size_t> positions;
    for (std::size_t index = 0; index < after.collections.size(); ++index) {
        const PHAssetCollection& album = *after.collections[index];
        const auto found = known.find(album.localIdentifier);
        const bool wasTouched = after.changes[index] > before.change;
        if (found != known.end() && (wasTouched || !isAlike(*found->second, album))) {
            positions.push_back(index);
        }
    }
    return positions;
}

} // namespace

std::optional<PHAssetChangeDetails> PHChange::changeDetailsForFetchResult(
    const PHAssetFetchResultPtr& result) const {
    const auto before = std::dynamic_pointer_cast<const AssetFetchResult>(result);
    if (!before || !before->catalogue()) {
        return std::nullopt;
    }
    const NumberList& numbersBefore = before->numbers();
    const auto after = before->fetchedAgain();
    const NumberList& numbersAfter = after->numbers();
    if (after->change() == before->change()) {
        return std::nullopt;
    }
    const auto changed = assetsChangedSince(*before->catalogue(), before->change());
    if (changed && changed->empty() && isSame(numbersBefore, numbersAfter)) {
        return std::nullopt;
    }
    PHAssetChangeDetails details{.fetchResultBeforeChanges = before, .fetchResultAfterChanges = after};
    auto difference = changed && before->wantsIncrementalChangeDetails()
                          ? differenceOfLists(numbersBefore, numbersAfter)
                          : std::nullopt;
    if (!difference || difference->removed.size() + difference->inserted.size() > kMostTold) {
        return details;
    }
    details.hasIncrementalChanges = true;
    takeDifference(details, std::move(*difference));
    details.changedIndexes = changedPositions(numbersAfter, details.insertedIndexes, *changed);
    if (tellsNothing(details)) {
        return std::nullopt;
    }
    details.removedObjects = before->objectsOfNumbers(numbersAt(numbersBefore, details.removedIndexes));
    details.insertedObjects = after->objectsOfNumbers(numbersAt(numbersAfter, details.insertedIndexes));
    details.changedObjects = after->objectsOfNumbers(numbersAt(numbersAfter, details.changedIndexes));
    return details;
}

std::optional<PHAssetCollectionChangeDetails> PHChange::changeDetailsForFetchResult(
    const PHAssetCollectionFetchResultPtr& result) const {
    const auto before = std::dynamic_pointer_cast<const CollectionFetchResult>(result);
    if (!before) {
        return std::nullopt;
    }
    const auto after = before->fetchedAgain();
    AlbumNumbers numbers;
    const NumberList numbersBefore = numbers.numbersOf(before->fetched().collections);
    const NumberList numbersAfter = numbers.numbersOf(after->fetched().collections);
    auto difference = differenceOfLists(numbersBefore, numbersAfter);
    PHAssetCollectionChangeDetails details{
        .fetchResultBeforeChanges = before, .fetchResultAfterChanges = after};
    if (!difference || !before->wantsIncrementalChangeDetails()) {
        return details;
    }
    details.hasIncrementalChanges = true;
    takeDifference(details, std::move(*difference));
    details.changedIndexes = changedAlbums(before->fetched(), after->fetched());
    if (tellsNothing(details)) {
        return std::nullopt;
    }
    details.removedObjects = objectsAt(before->fetched().collections, details.removedIndexes);
    details.insertedObjects = objectsAt(after->fetched().collections, details.insertedIndexes);
    details.changedObjects = objectsAt(after->fetched().collections, details.changedIndexes);
    return details;
}

} // namespace exifcard
