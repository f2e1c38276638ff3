#include "platform/avfoundation/AVAssetImageGenerator.h"

#include "platform/avfoundation/VideoModule.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/Identifiers.h"
#include "platform/uivalues/BitmapGeometry.h"
#include "platform/uivalues/ShrunkSize.h"
#include "platform/uivalues/UIImage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace exifcard {
namespace {

struct Turn {
    int exifOrientation;
    CGAffineTransform transform;
};

/// The eight ways to turn a picture; a track's transform is taken for the nearest one.
constexpr Turn kTurns[] = {
    {1, {1, 0, 0, 1, 0, 0}},
    {2, {-1, 0, 0, 1, 0, 0}},
    {3, {-1, 0, 0, -1, 0, 0}},
    {4, {1, 0, 0, -1, 0, 0}},
    {5, {0, 1, 1, 0, 0, 0}},
    {6, {0, 1, -1, 0, 0, 0}},
    {7, {0, -1, -1, 0, 0, 0}},
    {8, {0, -1, 1, 0, 0, 0}},
};

int exifOrientationOf(const CGAffineTransform& transform) {
    const auto likeness = [&transform](const Turn& turn) {
        const CGAffineTransform& other = turn.transform;
        return transform.a * other.a + transform.b * other.b + transform.c * other.c + transform.d * other.d;
    };
    return std::ranges::max_element(kTurns, {}, likeness)->exifOrientation;
}

/// A frame that is decoded when it is wanted.
class VideoFramePixels : public PixelSource {
public:
    VideoFramePixels(Data file, double seconds, CGSize storedSize, int exifOrientation)
        : _file(std::move(file))
        , _seconds(seconds)
        , _storedSize(storedSize)
        , _exifOrientation(exifOrientation) {}

    std::shared_ptr<const Bitmap> decode(std::optional<CGSize> /*smallest*/) const override {
        auto frame = videoFrame(_file.bytes(), _seconds, _storedSize);
        if (!frame || _file.wasCutShort()) {
            return nullptr;
        }
        return std::make_shared<const Bitmap>(
            _exifOrientation == 1 ? std::move(*frame) : turnedBitmap(*frame, _exifOrientation));
    }

private:
    Data _file;
    double _seconds;
    CGSize _storedSize;   // Before the turn, in pixels.
    int _exifOrientation; // By which it is turned.
};

DispatchQueue& generatorQueue() {
    static const auto queue =
        DispatchQueue::makeConcurrent(std::string(kQueueLabelPrefix) + ".imagegenerator");
    return *queue;
}

} // namespace

std::shared_ptr<UIImage> AVAssetImageGenerator::copyCGImageAtTime(CMTime time) const {
    const auto tracks = _asset ? _asset->tracksWithMediaType(AVMediaTypeVideo) : std::vector<AVAssetTrack>();
    if (tracks.empty() || !tracks.front().isDecodable) {
        return nullptr;
    }
    const AVAssetTrack& track = tracks.front();
    const int turn = appliesPreferredTrackTransform ? exifOrientationOf(track.preferredTransform) : 1;
    const auto turned = [turn](CGSize size) {
        return isQuarterTurn(turn) ? CGSize{size.height, size.width} : size;
    };
    const CGSize size = shrunkToFit(turned(track.naturalSize), maximumSize);
    auto pixels =
        std::make_shared<VideoFramePixels>(_asset->file(), CMTimeGetSeconds(time), turned(size), turn);
    return std::make_shared<UIImage>(
        std::move(pixels), static_cast<int>(size.width), static_cast<int>(size.height));
}

void AVAssetImageGenerator::generateCGImagesAsynchronouslyForTimes(
    std::vector<CMTime> requestedTimes, Handler handler) const {
    generatorQueue().async(
        [generator = *this, times = std::move(requestedTimes), handler = std::move(handler)] {
            for (const CMTime time : times) {
                if (const auto image = generator.copyCGImageAtTime(time)) {
                    handler(time, image, time, AVAssetImageGeneratorResult::Succeeded, std::nullopt);
                } else {
                    handler(time, nullptr, {}, AVAssetImageGeneratorResult::Failed, "Cannot Open");
                }
            }
        });
}

} // namespace exifcard
