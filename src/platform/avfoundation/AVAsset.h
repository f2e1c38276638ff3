#pragma once

#include "platform/avfoundation/AVMetadataItem.h"
#include "platform/avfoundation/CMTime.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/URL.h"
#include "platform/uivalues/CGGeometry.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

inline constexpr std::string_view AVMediaTypeVideo = "vide";
inline constexpr std::string_view AVMediaTypeAudio = "soun";
inline constexpr std::string_view AVMediaTypeText = "text";
inline constexpr std::string_view AVMediaTypeMetadata = "meta";

/// One track of a video file.
struct AVAssetTrack {
    std::string mediaType;
    CGSize naturalSize;                   ///< In pixels, before `preferredTransform`.
    float nominalFrameRate = 0;           ///< Frames ÷ duration; 0 for what is no video.
    CGAffineTransform preferredTransform; ///< Turns the picture upright.
    bool isDecodable = false;
};

/// A video or audio file, read once when it is opened; no frame is decoded. Immutable; any thread.
class AVURLAsset {
public:
    /// @return Null for what is no such file or is broken beyond reading, which is logged.
    static std::shared_ptr<const AVURLAsset> assetWithURL(const URL& url);

    const URL& url() const { return _url; }
    /// Indefinite where the file does not tell.
    CMTime duration() const { return _duration; }
    /// In the order of the file.
    const std::vector<AVAssetTrack>& tracks() const { return _tracks; }
    std::vector<AVAssetTrack> tracksWithMediaType(std::string_view mediaType) const;
    /// Of all key spaces.
    const std::vector<AVMetadataItem>& metadata() const { return _metadata; }
    /// The metadata item of that common key; nothing without one.
    std::optional<AVMetadataItem> creationDate() const;

    /// When it was recorded as the container's header tells, in ISO 8601 and UTC; empty where it does not. No
    /// call of the platform's: there it is a part of the track's own data.
    const std::string& headerCreationTime() const { return _headerCreationTime; }

    /// The bytes of the file, mapped.
    const Data& file() const { return _file; }

private:
    AVURLAsset() = default;

    URL _url;
    Data _file;
    CMTime _duration;
    std::vector<AVAssetTrack> _tracks;
    std::vector<AVMetadataItem> _metadata;
    std::string _headerCreationTime;
};

} // namespace exifcard
