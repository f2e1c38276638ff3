#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Date.h"
#include "platform/photos/PHFetchOptions.h"
#include "platform/photos/PHFetchResult.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace exifcard {

struct PHAsset;
struct PHAssetCollection;
using PHAssetPtr = std::shared_ptr<const PHAsset>;
using PHAssetFetchResult = PHFetchResult<PHAsset>;
using PHAssetFetchResultPtr = std::shared_ptr<const PHAssetFetchResult>;

enum class PHAssetMediaType : std::int64_t { Unknown = 0, Image = 1, Video = 2, Audio = 3 };

/// How an asset is shown best.
enum class PHAssetPlaybackStyle : std::int64_t {
    Unsupported = 0,
    Image = 1,
    ImageAnimated = 2,
    LivePhoto = 3,
    Video = 4,
    VideoLooping = 5
};

// The bits of `mediaSubtypes`.
inline constexpr std::uint64_t kPHAssetMediaSubtypePhotoPanorama = 1;
inline constexpr std::uint64_t kPHAssetMediaSubtypePhotoHDR = 2;
inline constexpr std::uint64_t kPHAssetMediaSubtypePhotoScreenshot = 4;
inline constexpr std::uint64_t kPHAssetMediaSubtypePhotoLive = 8;
inline constexpr std::uint64_t kPHAssetMediaSubtypePhotoDepthEffect = 16;
inline constexpr std::uint64_t kPHAssetMediaSubtypeSpatialMedia = 0x400;
inline constexpr std::uint64_t kPHAssetMediaSubtypeVideoStreamed = 0x10000;
inline constexpr std::uint64_t kPHAssetMediaSubtypeVideoHighFrameRate = 0x20000;
inline constexpr std::uint64_t kPHAssetMediaSubtypeVideoTimelapse = 0x40000;
inline constexpr std::uint64_t kPHAssetMediaSubtypeVideoScreenRecording = 0x80000;
inline constexpr std::uint64_t kPHAssetMediaSubtypeVideoCinematic = 0x200000;

// The bits of `sourceType`.
inline constexpr std::uint64_t kPHAssetSourceTypeUserLibrary = 1;
inline constexpr std::uint64_t kPHAssetSourceTypeCloudShared = 2;
inline constexpr std::uint64_t kPHAssetSourceTypeiTunesSynced = 4;

// The bits of `burstSelectionTypes`.
inline constexpr std::uint64_t kPHAssetBurstSelectionTypeAutoPick = 1;
inline constexpr std::uint64_t kPHAssetBurstSelectionTypeUserPick = 2;

/// One photo or video of the library, as it was when it was fetched: immutable, fetched anew to see a change.
///
/// Fetches block, on the disk alone, and may be made on any thread. Without
/// options: what is neither hidden nor an unpicked picture of a burst. Where
/// access is denied they answer empty results; an option that the library does
/// not support raises `PlatformException`.
struct PHAsset {
    std::string localIdentifier = {}; ///< "CC95F08C-88C3-4012-9D6D-64A413D254B3/L0/001"
    PHAssetMediaType mediaType = PHAssetMediaType::Unknown;
    std::uint64_t mediaSubtypes = 0; ///< Bits: panorama 1, HDR 2, screenshot 4, live photo 8 and so on.
    std::int64_t pixelWidth = 0;     ///< Upright.
    std::int64_t pixelHeight = 0;
    std::optional<Date> creationDate = std::nullopt;
    std::optional<Date> modificationDate = std::nullopt;
    std::optional<CLLocation> location = std::nullopt;
    double duration = 0; ///< Seconds; 0 for photos.
    bool isFavorite = false;
    bool isHidden = false;
    PHAssetPlaybackStyle playbackStyle = PHAssetPlaybackStyle::Unsupported;
    std::uint64_t sourceType = 0;                              ///< Bits: user library 1, synced 4.
    std::optional<std::string> burstIdentifier = std::nullopt; ///< One for all pictures of a burst.
    bool representsBurst = false;                              ///< Stands for its burst.
    std::uint64_t burstSelectionTypes = 0;                     ///< Bits: auto pick 1, user pick 2.

    /// Without sort descriptors: the oldest first.
    static PHAssetFetchResultPtr fetchAssetsWithOptions(const PHFetchOptions& options = {});
    static PHAssetFetchResultPtr fetchAssetsWithMediaType(
        PHAssetMediaType mediaType, const PHFetchOptions& options = {});
    /// Without sort descriptors: in the album's own order.
    static PHAssetFetchResultPtr fetchAssetsInAssetCollection(
        const PHAssetCollection& collection, const PHFetchOptions& options = {});
    /// Those that there are, hidden ones too, in no promised order.
    static PHAssetFetchResultPtr fetchAssetsWithLocalIdentifiers(
        std::span<const std::string> identifiers, const PHFetchOptions& options = {});
    /// The pictures of one burst.
    static PHAssetFetchResultPtr fetchAssetsWithBurstIdentifier(
        const std::string& burstIdentifier, const PHFetchOptions& options = {});
    /// Up to three that stand for the album; null for an album that holds none.
    static PHAssetFetchResultPtr fetchKeyAssetsInAssetCollection(
        const PHAssetCollection& collection, const PHFetchOptions& options = {});
};

} // namespace exifcard
