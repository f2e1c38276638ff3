#include "platform/photos/CollectionFetchResult.h"

#include "platform/foundation/PlatformException.h"

#include <fmt/format.h>

#include <algorithm>

namespace exifcard {

CollectionFetchResult::CollectionFetchResult(Question question, bool wantsIncrementalChangeDetails)
    : _question(std::move(question))
    , _wantsIncrementalChangeDetails(wantsIncrementalChangeDetails)
    , _fetched(_question()) {
}

std::size_t CollectionFetchResult::countUpTo(std::size_t most) const {
    return std::min(count(), most);
}

PHAssetCollectionFetchResult::ObjectPtr CollectionFetchResult::objectAtIndex(std::size_t index) const {
    return objectsInRange(index, 1).front();
}

std::vector<PHAssetCollectionFetchResult::ObjectPtr> CollectionFetchResult::objectsInRange(
    std::size_t location, std::size_t length) const {
    if (location > count() || length > count() - location) {
        throw PlatformException("NSRangeException",
            fmt::format("{} objects from {} on are beyond the end of a fetch result", length, location));
    }
    const auto first = _fetched.collections.begin() + static_cast<std::ptrdiff_t>(location);
    return {first, first + static_cast<std::ptrdiff_t>(length)};
}

std::optional<std::size_t> CollectionFetchResult::indexOfObject(const PHAssetCollection& object) const {
    const auto found = std::ranges::find_if(_fetched.collections,
        [&object](const auto& other) { return other->localIdentifier == object.localIdentifier; });
    if (found == _fetched.collections.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - _fetched.collections.begin());
}

std::shared_ptr<CollectionFetchResult> CollectionFetchResult::fetchedAgain() const {
    return std::make_shared<CollectionFetchResult>(_question, _wantsIncrementalChangeDetails);
}

} // namespace exifcard
