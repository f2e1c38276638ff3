#pragma once

#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetCollection.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace exifcard {

/// Stands for an object that a change block makes.
struct PHObjectPlaceholder {
    std::string localIdentifier; ///< The new object's own.
};

/// Makes, fills and drops albums of the user. Made and used inside a change block only; outside one every
/// call raises `PlatformException`. Albums that the disk makes, and smart ones, refuse: `ChangeNotSupported`.
class PHAssetCollectionChangeRequest {
public:
    static PHAssetCollectionChangeRequest creationRequestForAssetCollectionWithTitle(
        const std::string& title);
    /// @param assets  What the album holds, for the calls with indexes; may be null.
    static PHAssetCollectionChangeRequest changeRequestForAssetCollection(
        const PHAssetCollection& collection, const PHAssetFetchResultPtr& assets = nullptr);
    /// Their assets stay.
    static void deleteAssetCollections(std::span<const PHAssetCollectionPtr> collections);

    PHObjectPlaceholder placeholderForCreatedAssetCollection() const { return {_identifier}; }

    void setTitle(const std::string& title);
    /// To the end; one that is in the album already stays where it is.
    void addAssets(std::span<const PHAssetPtr> assets);
    void insertAssets(std::span<const PHAssetPtr> assets, std::size_t index);
    void removeAssets(std::span<const PHAssetPtr> assets);
    /// @throws PlatformException beyond the end of the result that the request was made with.
    void removeAssetsAtIndexes(std::span<const std::size_t> indexes);

private:
    PHAssetCollectionChangeRequest(std::string identifier, PHAssetFetchResultPtr assets)
        : _identifier(std::move(identifier))
        , _assets(std::move(assets)) {}

    std::string _identifier;
    PHAssetFetchResultPtr _assets;
};

} // namespace exifcard
