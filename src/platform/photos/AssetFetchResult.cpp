#include "platform/photos/AssetFetchResult.h"

#include "platform/foundation/PlatformException.h"
#include "platform/photos/AssetReader.h"
#include "platform/photos/AssetRow.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace exifcard {
namespace {

/// About a screen of tiles.
constexpr std::size_t kPageLength = 64;
constexpr std::size_t kMostPages = 8;

} // namespace

std::shared_ptr<AssetFetchResult> AssetFetchResult::make(
    std::shared_ptr<PhotoCatalogue> catalogue, QueryText query, bool wantsIncrementalChangeDetails) {
    auto result = std::shared_ptr<AssetFetchResult>(
        new AssetFetchResult(std::move(catalogue), std::move(query), wantsIncrementalChangeDetails));
    if (!result->_isWhole) {
        result->_catalogue->watcher().addSnapshot(result);
    }
    return result;
}

AssetFetchResult::AssetFetchResult(
    std::shared_ptr<PhotoCatalogue> catalogue, QueryText query, bool wantsIncrementalChangeDetails)
    : _catalogue(std::move(catalogue))
    , _query(std::move(query))
    , _wantsIncrementalChangeDetails(wantsIncrementalChangeDetails) {
    begin();
}

void AssetFetchResult::begin() const {
    _database = _catalogue ? _catalogue->connections().reader() : nullptr;
    if (!_database) {
        _isWhole = true;
        return;
    }
    _database->execute("BEGIN");
    _rows.emplace(_query.on(*_database));
    fill(1); // From the first row on, the transaction keeps the library as it is now.
}

void AssetFetchResult::fill(std::size_t wanted) const {
    while (!_isWhole && _numbers.count() < wanted) {
        if (_rows->step()) {
            _numbers.append(_rows->integer(0));
            continue;
        }
        _isWhole = true;
        _rows.reset();
        _change = lastChange(*_database); // Of the same moment as the rows.
        _database.reset();                // Ends the transaction.
    }
}

std::size_t AssetFetchResult::count() const {
    return countUpTo(std::numeric_limits<std::size_t>::max());
}

std::size_t AssetFetchResult::countUpTo(std::size_t most) const {
    const std::scoped_lock lock(_mutex);
    fill(most);
    return std::min(_numbers.count(), most);
}

void AssetFetchResult::requireRange(std::size_t location, std::size_t length) const {
    const bool isCountable = length <= std::numeric_limits<std::size_t>::max() - location;
    if (isCountable) {
        fill(location + length);
    }
    if (!isCountable || location + length > _numbers.count()) {
        throw PlatformException("NSRangeException",
            fmt::format("{} objects from {} on are beyond the end of a fetch result", length, location));
    }
}

PHAssetFetchResult::ObjectPtr AssetFetchResult::objectAtIndex(std::size_t index) const {
    const std::scoped_lock lock(_mutex);
    requireRange(index, 1);
    return page(index / kPageLength).objects[index % kPageLength];
}

std::vector<PHAssetFetchResult::ObjectPtr> AssetFetchResult::objectsInRange(
    std::size_t location, std::size_t length) const {
    const std::scoped_lock lock(_mutex);
    requireRange(location, length);
    return load(location, length);
}

const AssetFetchResult::Page& AssetFetchResult::page(std::size_t number) const {
    auto found = std::ranges::find(_pages, number, &Page::number);
    if (found != _pages.end()) {
        Page used = std::move(*found);
        _pages.erase(found);
        _pages.push_front(std::move(used));
        return _pages.front();
    }
    const std::size_t location = number * kPageLength;
    fill(location + kPageLength);
    const std::size_t length = std::min(kPageLength, _numbers.count() - location);
    _pages.push_front({number, load(location, length)});
    if (_pages.size() > kMostPages) {
        _pages.pop_back();
    }
    return _pages.front();
}

std::vector<PHAssetFetchResult::ObjectPtr> AssetFetchResult::load(
    std::size_t location, std::size_t length) const {
    std::vector<ObjectPtr> objects;
    objects.reserve(length);
    // While the query runs, its connection is used along with it: the first page opens no other.
    const auto database = _database ? _database : _catalogue ? _catalogue->connections().reader() : nullptr;
    if (!database) {
        objects.resize(length);
        return objects;
    }
    AssetReader reader(*database);
    for (std::size_t index = location; index < location + length; ++index) {
        objects.push_back(reader.asset(_numbers[index]));
    }
    return objects;
}

std::optional<std::size_t> AssetFetchResult::indexOfObject(const PHAsset& object) const {
    const std::scoped_lock lock(_mutex);
    const auto database = _catalogue ? _catalogue->connections().reader() : nullptr;
    if (!database) {
        return std::nullopt;
    }
    auto query =
        database->query("SELECT id FROM assets WHERE uuid = ?", {uuidOfIdentifier(object.localIdentifier)});
    if (!query.step()) {
        return std::nullopt;
    }
    const std::int64_t number = query.integer(0);
    for (std::size_t index = 0; index < _numbers.count() || !_isWhole; ++index) {
        fill(index + 1);
        if (index < _numbers.count() && _numbers[index] == number) {
            return index;
        }
    }
    return std::nullopt;
}

void AssetFetchResult::finish() {
    static_cast<void>(count());
}

const NumberList& AssetFetchResult::numbers() const {
    static_cast<void>(count());
    return _numbers; // Never changes once it is whole.
}

std::int64_t AssetFetchResult::change() const {
    const std::scoped_lock lock(_mutex);
    return _change;
}

std::shared_ptr<AssetFetchResult> AssetFetchResult::fetchedAgain() const {
    return make(_catalogue, _query, _wantsIncrementalChangeDetails);
}

std::vector<PHAssetFetchResult::ObjectPtr> AssetFetchResult::objectsOfNumbers(
    const std::vector<std::int64_t>& numbers) const {
    const auto database = _catalogue ? _catalogue->connections().reader() : nullptr;
    std::vector<ObjectPtr> objects(numbers.size());
    if (database) {
        AssetReader reader(*database);
        std::ranges::transform(
            numbers, objects.begin(), [&reader](std::int64_t n) { return reader.asset(n); });
    }
    return objects;
}

} // namespace exifcard
