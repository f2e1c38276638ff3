#pragma once

#include "platform/photos/PHAssetCollection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace exifcard {

class PhotoCatalogue;

/// Albums as they were at one moment.
struct FetchedCollections {
    std::vector<PHAssetCollectionPtr> collections = {};
    std::vector<std::int64_t> changes = {}; ///< Of each: the change that last touched it.
    std::int64_t change = 0;                ///< The last change of the library.
};

/// The albums of a question. They are few and held whole.
class CollectionFetchResult final : public PHAssetCollectionFetchResult {
public:
    using Question = std::function<FetchedCollections()>;

    CollectionFetchResult(Question question, bool wantsIncrementalChangeDetails);

    std::size_t count() const override { return _fetched.collections.size(); }
    std::size_t countUpTo(std::size_t most) const override;
    ObjectPtr objectAtIndex(std::size_t index) const override;
    std::vector<ObjectPtr> objectsInRange(std::size_t location, std::size_t length) const override;
    std::optional<std::size_t> indexOfObject(const PHAssetCollection& object) const override;

    const FetchedCollections& fetched() const { return _fetched; }
    bool wantsIncrementalChangeDetails() const { return _wantsIncrementalChangeDetails; }
    /// The same question, asked now.
    std::shared_ptr<CollectionFetchResult> fetchedAgain() const;

private:
    const Question _question;
    const bool _wantsIncrementalChangeDetails;
    const FetchedCollections _fetched;
};

} // namespace exifcard
