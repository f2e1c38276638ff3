#pragma once

#include "library/ExifManager.h"
#include "platform/photos/PHChange.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_set>

namespace exifcard {

class ExifDataListDataSource;

/// What a list held when a change of the library was to be compared with it.
struct ListedAssets {
    static ListedAssets ofDataSource(const ExifDataListDataSource& dataSource);

    PHAssetFetchResultPtr fetchResult;
    ExifManager::Records records; ///< Unfiltered: so many from the start of the fetch result.
    bool hasMore = false;
    std::uint64_t generation = 0;

    /// Of their assets; an empty one of a record without.
    std::unordered_set<std::string> identifiers() const;
    /// Whether the list is still that one.
    bool isStillListed(const ExifDataListDataSource& dataSource) const;
};

/// What a change of the library means for a list.
struct RecordsOfChange {
    /// Blocks on the disk; never on the main queue.
    static RecordsOfChange compare(const PHChange& change, ListedAssets listed);

    ListedAssets listed;
    PHAssetFetchResultPtr fetchResultAfterChanges; ///< Null: nothing has changed.
    bool needsReload = false;                      ///< Too much has changed; what follows is empty.
    std::set<std::string, std::less<>> removed;
    std::map<std::string, ExifManager::Record, std::less<>> changed;
    ExifManager::Records inserted;

    bool hasBlankRecords = false; ///< Some listed ones have no asset, and are taken out.

    bool isEmpty() const {
        return removed.empty() && changed.empty() && inserted.empty() && !hasBlankRecords;
    }
    /// Takes them into both lists of the data source. Main queue.
    /// @return Whether it shows other records now.
    bool apply(ExifDataListDataSource& dataSource) const;
};

} // namespace exifcard
