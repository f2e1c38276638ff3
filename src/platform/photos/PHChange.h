#pragma once

#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace exifcard {

class PhotoCatalogue;

/// How a fetch result differs from the one before.
template<class Object>
struct PHFetchResultChangeDetails {
    using ResultPtr = std::shared_ptr<const PHFetchResult<Object>>;
    using Objects = std::vector<std::shared_ptr<const Object>>;
    struct Move {
        std::size_t from =
            0; ///< After removals and insertions, as if the moves came one by one in this order.
        std::size_t to = 0;
        bool operator==(const Move&) const = default;
    };

    ResultPtr fetchResultBeforeChanges;
    ResultPtr
        fetchResultAfterChanges; ///< Kept for the next comparison, or later reports refer to the stale one.
    bool hasIncrementalChanges = false; ///< False: too much has changed, reload; the lists below are empty.
    std::vector<std::size_t> removedIndexes = {};  ///< Ascending positions in the result before.
    std::vector<std::size_t> insertedIndexes = {}; ///< Ascending positions after the removals.
    std::vector<std::size_t> changedIndexes = {};  ///< Ascending positions in the result after.
    Objects removedObjects = {};
    Objects insertedObjects = {};
    Objects changedObjects = {};
    std::vector<Move> moves = {};
};
using PHAssetChangeDetails = PHFetchResultChangeDetails<PHAsset>;
using PHAssetCollectionChangeDetails = PHFetchResultChangeDetails<PHAssetCollection>;

/// Something in the library changed. Says what that means for a result or an object; each call blocks on the
/// disk and compares with the library as it is then.
class PHChange {
public:
    explicit PHChange(std::shared_ptr<PhotoCatalogue> catalogue) : _catalogue(std::move(catalogue)) {}

    /// Nothing where that result did not change.
    std::optional<PHAssetChangeDetails> changeDetailsForFetchResult(
        const PHAssetFetchResultPtr& result) const;
    std::optional<PHAssetCollectionChangeDetails> changeDetailsForFetchResult(
        const PHAssetCollectionFetchResultPtr& result) const;

private:
    std::shared_ptr<PhotoCatalogue> _catalogue;
};

} // namespace exifcard
