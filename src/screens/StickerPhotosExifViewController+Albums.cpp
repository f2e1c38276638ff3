#include "screens/StickerPhotosExifViewController.h"

#include "library/LocalImageFiles.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/uikit/Text+Qt.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace exifcard {
namespace {

using Albums = std::vector<PHAssetCollectionPtr>;

constexpr std::int64_t kLibrarySource = 1;
constexpr std::int64_t kSubtypes[] = {2, 3, 4, 5, 6};
constexpr std::size_t kChosenAlbum = 23;

/// Albums that several queues gather.
struct GatheredAlbums {
    void add(const Albums& found) {
        const std::lock_guard lock(mutex);
        albums.insert(albums.end(), found.begin(), found.end());
    }

    std::mutex mutex;
    Albums albums; // Guarded by mutex.
};

QString titleOf(const PHAssetCollectionPtr& album) {
    return qString(album->localizedTitle.value_or(""));
}

} // namespace

void StickerPhotosExifViewController::getAssetsFromCorrectAssetCollection() {
    const auto group = std::make_shared<DispatchGroup>();
    const auto gathered = std::make_shared<GatheredAlbums>();
    const auto gather = [&](std::function<Albums()> find) {
        group->enter();
        DispatchQueue::globalQueue().async([group, gathered, find = std::move(find)] {
            gathered->add(find());
            group->leave();
        });
    };
    gather([] { return LocalImageFiles::getCameraRollAssetCollection(); });
    for (const std::int64_t subtype : kSubtypes) {
        gather([subtype] {
            Albums found;
            LocalImageFiles::allAlbumsFromPhotosSource(
                kLibrarySource, subtype, [&found](const Albums& albums) { found = albums; });
            return found;
        });
    }
    group->notify(DispatchQueue::mainQueue(), [weak = weakSelf(), gathered] {
        const auto self = std::static_pointer_cast<StickerPhotosExifViewController>(weak.lock());
        Albums& albums = gathered->albums;
        if (!self || albums.size() <= kChosenAlbum) {
            return;
        }
        std::ranges::stable_sort(albums, [](const auto& one, const auto& other) {
            return titleOf(one).compare(titleOf(other), Qt::CaseInsensitive) < 0;
        });
        const PHAssetCollectionPtr& album = albums[kChosenAlbum];
        debugLog("AlbumTitle %@", {album->localizedTitle.value_or("")});
        self->load(album);
    });
}

} // namespace exifcard
