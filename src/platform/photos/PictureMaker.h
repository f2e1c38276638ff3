#pragma once

#include "platform/photos/PHAsset.h"
#include "platform/photos/PictureCache.h"
#include "platform/photos/PictureSize.h"
#include "platform/photos/RenditionFile.h"
#include "platform/photos/ThumbnailStore.h"

#include <memory>
#include <optional>
#include <string>

namespace exifcard {

class UIImage;

/// What a picture is made from and how it is wanted.
struct PictureOrder {
    PHAsset asset;
    WantedPicture wanted;
    std::optional<StoredFile> file; ///< Nothing: there is no picture.

    /// Tells the file and its state.
    std::string fileKey() const;
    /// Tells the picture that is wanted of it.
    std::string pictureKey() const;
};

/// Makes pictures, and finds those that were made before, in memory and on disk. Thread-safe; blocks.
class PictureMaker {
public:
    /// A picture that was made before.
    struct Found {
        std::shared_ptr<UIImage> picture; ///< Null: none.
        bool isDegraded = false;          ///< Smaller than what is wanted.
    };
    Found found(const PictureOrder& order);

    /// Decodes it from the file, and keeps it.
    /// @return Null for what does not decode.
    std::shared_ptr<UIImage> made(const PictureOrder& order, const std::string& path);

    void forget(const PictureOrder& order) { _cache.remove(order.pictureKey()); }
    void forgetAll() { _cache.clear(); }

private:
    std::shared_ptr<UIImage> storedAsWanted(const PictureOrder& order) const;
    void keep(const PictureOrder& order, const std::shared_ptr<UIImage>& picture);

    PictureCache _cache;
    ThumbnailStore _thumbnails; ///< Of files, and small pictures as they were wanted.
};

} // namespace exifcard
