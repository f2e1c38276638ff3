#pragma once

#include "library/ExifManager.h"
#include "platform/photos/PHChange.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace exifcard {

class ExifDataListDataSource;

/// What a list held when a change of the library was to be compared with it.
struct ListedAssets {
    static ListedAssets ofDataSource(const ExifDataListDataSource& dataSource);

    PHAssetFetchResultPtr fetchResult;
    std::set<std::string, std::less<>> identifiers;
    std::size_t loadedCount = 0; ///< So many from the start of the fetch result are in the list.
    bool hasMore = false;
    std::uint64_t generation = 0;

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

    bool isEmpty() const { return removed.empty() && changed.empty() && inserted.empty(); }
    /// Takes them into both lists of the data source. Main queue.
    void apply(ExifDataListDataSource& dataSource) const;
};

} // namespace exifcard
