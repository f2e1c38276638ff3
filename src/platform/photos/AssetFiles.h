#pragma once

#include "platform/photos/AssetByteSource.h"
#include "platform/photos/PHAssetResource.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

class PhotoCatalogue;

/// A file that belongs to an asset, and who brings its bytes.
struct StoredFile {
    AssetFile file;
    PHAssetResourceType type = PHAssetResourceType::Photo;
    std::string uniformTypeIdentifier;
    std::int64_t modified = 0; ///< Nanoseconds since 1970.
    int orientation = 0;       ///< EXIF, 1 to 8; 0: not known.
    std::int64_t embeddedVideoOffset = 0;
    std::int64_t embeddedVideoLength = 0;    ///< 0: none.
    std::shared_ptr<AssetByteSource> source; ///< Null: nobody.

    /// The name alone, as text.
    std::string displayName() const;
    std::optional<std::string> localFile() const { return source ? source->localFile(file) : std::nullopt; }
    bool isElsewhere() const { return source && source->isElsewhere(file); }
};

/// In ascending order of type, without what is no resource. Empty for an asset that the catalogue does not
/// hold.
std::vector<StoredFile> filesOfAsset(PhotoCatalogue& catalogue, std::string_view localIdentifier);
/// Nothing for a number that there is not.
std::optional<StoredFile> fileOfNumber(PhotoCatalogue& catalogue, std::int64_t number);

} // namespace exifcard
