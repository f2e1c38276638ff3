#pragma once

#include "platform/photos/AssetQuery.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueWatcher.h"
#include "platform/photos/NumberList.h"
#include "platform/photos/PHAsset.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace exifcard {

class PhotoCatalogue;

/// The assets of a query. The query is stepped as far as someone asks; until its end the connection stays in
/// one transaction, so that all of it is of one moment.
class AssetFetchResult final : public PHAssetFetchResult, public OpenSnapshot {
public:
    /// @param catalogue  Null for a result without anything.
    static std::shared_ptr<AssetFetchResult> make(
        std::shared_ptr<PhotoCatalogue> catalogue, QueryText query, bool wantsIncrementalChangeDetails);

    std::size_t count() const override;
    std::size_t countUpTo(std::size_t most) const override;
    ObjectPtr objectAtIndex(std::size_t index) const override;
    std::vector<ObjectPtr> objectsInRange(std::size_t location, std::size_t length) const override;
    std::optional<std::size_t> indexOfObject(const PHAsset& object) const override;
    void finish() override;

    /// All numbers; fills the result.
    const NumberList& numbers() const;
    /// The last change of the library when this was fetched; known once it is filled.
    std::int64_t change() const;
    const std::shared_ptr<PhotoCatalogue>& catalogue() const { return _catalogue; }
    bool wantsIncrementalChangeDetails() const { return _wantsIncrementalChangeDetails; }
    /// The same question, asked now.
    std::shared_ptr<AssetFetchResult> fetchedAgain() const;
    /// The assets of those numbers as they are now, null for those that are not.
    std::vector<ObjectPtr> objectsOfNumbers(const std::vector<std::int64_t>& numbers) const;

private:
    struct Page {
        std::size_t number = 0;
        std::vector<ObjectPtr> objects;
    };

    AssetFetchResult(
        std::shared_ptr<PhotoCatalogue> catalogue, QueryText query, bool wantsIncrementalChangeDetails);

    // All with _mutex held.
    void begin() const;
    void fill(std::size_t wanted) const;
    void requireRange(std::size_t location, std::size_t length) const;
    const Page& page(std::size_t number) const;
    std::vector<ObjectPtr> load(std::size_t location, std::size_t length) const;

    const std::shared_ptr<PhotoCatalogue> _catalogue;
    const QueryText _query;
    const bool _wantsIncrementalChangeDetails;

    mutable std::mutex _mutex;
    // Guarded by _mutex, all of them. The connection, and what uses it, is there while the query runs.
    mutable NumberList _numbers;
    mutable bool _isWhole = false;
    mutable std::int64_t _change = 0;
    mutable CatalogueConnections::DatabasePtr _database;
    mutable std::optional<SQLiteStatement> _rows;
    mutable std::deque<Page> _pages; ///< Those used last, the latest in front.
};

} // namespace exifcard
