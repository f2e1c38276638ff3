#pragma once

#include "platform/avfoundation/AVAsset.h"
#include "platform/avfoundation/CMTime.h"
#include "platform/uivalues/CGGeometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class UIImage;

enum class AVAssetImageGeneratorResult { Succeeded = 0, Failed = 1, Cancelled = 2 };

/// Makes pictures of a video's frames.
class AVAssetImageGenerator {
public:
    /// @param image  Null unless the result is that it succeeded. Its size is known; the frame is decoded
    ///               each time that it is drawn, and then gives null where it does not decode.
    /// @param error  What failed, in words; nothing on success.
    using Handler = std::function<void(CMTime requestedTime,
        const std::shared_ptr<UIImage>& image,
        CMTime actualTime,
        AVAssetImageGeneratorResult result,
        const std::optional<std::string>& error)>;

    /// @param asset  Null makes a generator that fails at every time.
    explicit AVAssetImageGenerator(std::shared_ptr<const AVURLAsset> asset) : _asset(std::move(asset)) {}

    bool appliesPreferredTrackTransform = false; ///< Turns the frames upright.
    CGSize maximumSize; ///< In pixels: frames are shrunk to fit; zero leaves them as they are.

    /// The frame at that time, as the handler gets it; null where the asset has none.
    std::shared_ptr<UIImage> copyCGImageAtTime(CMTime time) const;

    /// Calls the handler once for each time, on a queue of its own.
    void generateCGImagesAsynchronouslyForTimes(std::vector<CMTime> requestedTimes, Handler handler) const;

private:
    std::shared_ptr<const AVURLAsset> _asset;
};

} // namespace exifcard
