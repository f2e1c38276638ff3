#include "cli/Albums.h"

#include <algorithm>
#include <iterator>

namespace exifcard {

std::vector<PHAssetCollectionPtr> allAlbums() {
    std::vector<PHAssetCollectionPtr> albums;
    for (const auto type : {PHAssetCollectionType::Album, PHAssetCollectionType::SmartAlbum}) {
        const auto found =
            PHAssetCollection::fetchAssetCollectionsWithType(type, PHAssetCollectionSubtype::Any);
        const auto loaded = found->objectsInRange(0, found->count());
        std::ranges::copy_if(loaded, std::back_inserter(albums),
            [](const PHAssetCollectionPtr& album) { return album != nullptr; });
    }
    return albums;
}

PHAssetCollectionPtr albumNamed(const std::string& name) {
    const auto albums = allAlbums();
    const auto found = std::ranges::find_if(albums, [&name](const PHAssetCollectionPtr& album) {
        return album->localizedTitle == name || album->localIdentifier == name;
    });
    return found == albums.end() ? nullptr : *found;
}

} // namespace exifcard
