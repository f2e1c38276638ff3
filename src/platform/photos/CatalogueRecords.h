#pragma once

#include "platform/photos/FileStamp.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PHAssetResource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

// What the catalogue keeps, as it is written. Numbers are those of its rows, from 1 on; 0 is none.

/// A place that the library was told to take: a folder of this computer or one elsewhere.
struct LibraryRoot {
    std::int64_t number = 0;
    std::string path;            ///< "/photos" or "remote:pictures"; bytes, no "/" at its end.
    std::string kind = "folder"; ///< Which `AssetByteSource` brings its bytes.
    std::uint64_t sourceType = kPHAssetSourceTypeUserLibrary; ///< Of all its assets.
    bool operator==(const LibraryRoot&) const = default;
};

/// One folder of a root.
struct LibraryFolder {
    std::int64_t number = 0;
    std::int64_t root = 0;
    std::string path;          ///< Below the root: "2024/05", empty for the root itself; bytes.
    bool isMountPoint = false; ///< Of a drive, when it was last looked at.
};

/// The type of a file that belongs to an asset but is none of its resources: what an editor wrote beside it.
inline constexpr PHAssetResourceType kSidecarFile{0};

/// A file as it was when it was last looked at.
struct CatalogueFile {
    std::int64_t number = 0;
    std::int64_t asset = 0;
    std::int64_t folder = 0;
    std::string name; ///< Without its folder; bytes.
    PHAssetResourceType type = PHAssetResourceType::Photo;
    std::string uniformTypeIdentifier; ///< "public.heic"
    FileStamp stamp;
    std::int64_t quickFingerprint = 0; ///< 0: not taken.
    std::int64_t wholeFingerprint = 0; ///< 0: not taken.
    bool isVanished = false;           ///< Its asset is.
    int orientation = 0;               ///< EXIF, 1 to 8, by which its pixels are turned; 0: not known.
    /// The same in the picture and in the video of a live photo; may be empty.
    std::string contentIdentifier;
    /// Where in a motion photo's file its video lies, in bytes; with a length it is a resource of its own,
    /// of the type `PairedVideo`.
    std::int64_t embeddedVideoOffset = 0;
    std::int64_t embeddedVideoLength = 0; ///< 0: none.
};

// The bits of `CatalogueAsset::traits`, for which the platform's asset has no field.
inline constexpr std::uint64_t kAssetTraitRAW = 1; ///< RAW alone or with a JPEG.
inline constexpr std::uint64_t kAssetTraitSelfPortrait = 2;
inline constexpr std::uint64_t kAssetTraitLongExposure = 4;

/// An asset as the import found it.
struct CatalogueAsset {
    std::int64_t number = 0; ///< 0: a new one.
    /// An empty `localIdentifier` is filled by the catalogue. `sourceType` is the root's. `isFavorite` and
    /// `isHidden` count for a new asset only, and what the user changed (favourite, hidden, the creation
    /// date, the place) stays as it is.
    PHAsset properties;
    std::optional<std::string> title = std::nullopt;
    std::optional<std::int64_t> rating = std::nullopt; ///< −1 … 5
    std::uint64_t traits = 0;
    std::vector<CatalogueFile> files = {}; ///< All of them. The first one's folder and name are the asset's.
};

} // namespace exifcard
