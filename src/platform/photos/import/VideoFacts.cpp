#include "platform/photos/import/VideoFacts.h"

#include "platform/avfoundation/AVAsset.h"
#include "platform/corelocation/ISO6709.h"
#include "platform/foundation/ASCII.h"
#include "platform/foundation/URL.h"
#include "platform/photos/import/CaptureDate.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace exifcard {
namespace {

constexpr std::string_view kContentIdentifierKey = "com.apple.quicktime.content.identifier";
constexpr std::string_view kCaptureModeKey = "com.apple.photos.captureMode";
constexpr std::string_view kCaptureRateKey = "com.android.capture.fps";

/// Slow motion is taken at 120 or 240 frames a second, ordinary videos at 60 at most.
constexpr double kLowestHighRate = 100;
/// A camera that takes fewer frames a second than this is making a time-lapse.
constexpr double kLowestOrdinaryRate = 10;

constexpr std::string_view kRecordingNames[] = {
    "rpreplay", "screen recording", "screenrecording", "screen_recording", "screencast"};

struct TypeOfExtension {
    std::string_view extension;
    std::string_view type;
};
constexpr TypeOfExtension kTypes[] = {
    {".mov", "com.apple.quicktime-movie"},
    {".mp4", "public.mpeg-4"},
    {".m4v", "com.apple.m4v-video"},
    {".3gp", "public.3gpp"},
    {".avi", "public.avi"},
};

std::string typeOfPath(std::string_view path) {
    for (const TypeOfExtension& type : kTypes) {
        if (path.size() >= type.extension.size() &&
            isEqualIgnoringCase(path.substr(path.size() - type.extension.size()), type.extension)) {
            return std::string(type.type);
        }
    }
    return "public.movie";
}

/// The first text under a full or a common key; empty without one.
std::string textOf(const AVURLAsset& video, std::string_view key) {
    for (const AVMetadataItem& item : video.metadata()) {
        if (item.key == key || item.commonKey == key) {
            return item.stringValue().value_or("");
        }
    }
    return {};
}

std::uint64_t subtypesOf(const AVURLAsset& video, const AVAssetTrack& track, std::string_view name) {
    const Value captureRate(textOf(video, kCaptureRateKey));
    const double rate = std::max<double>(track.nominalFrameRate, captureRate.doubleValue());
    const bool isSlowCapture =
        captureRate.doubleValue() > 0 && captureRate.doubleValue() < kLowestOrdinaryRate;
    const bool isTimeLapse = textOf(video, kCaptureModeKey) == "Time-lapse" || isSlowCapture;
    const bool isRecording = std::ranges::any_of(kRecordingNames, [name](std::string_view beginning) {
        return isEqualIgnoringCase(name.substr(0, beginning.size()), beginning);
    });
    return (rate >= kLowestHighRate ? kPHAssetMediaSubtypeVideoHighFrameRate : 0) |
           (isTimeLapse ? kPHAssetMediaSubtypeVideoTimelapse : 0) |
           (isRecording ? kPHAssetMediaSubtypeVideoScreenRecording : 0);
}

void addTrack(MediaFacts& facts, const AVAssetTrack& track) {
    const CGAffineTransform& turn = track.preferredTransform;
    const CGSize size = track.naturalSize;
    facts.pixelWidth = std::llround(std::abs(turn.a * size.width + turn.c * size.height));
    facts.pixelHeight = std::llround(std::abs(turn.b * size.width + turn.d * size.height));
}

} // namespace

std::optional<MediaFacts> factsOfVideo(const std::string& path) {
    const auto video = AVURLAsset::assetWithURL(URL::fileURLWithPath(path));
    if (!video) {
        return std::nullopt;
    }
    MediaFacts facts;
    facts.mediaType = PHAssetMediaType::Video;
    facts.typeIdentifier = typeOfPath(path);
    const double duration = CMTimeGetSeconds(video->duration());
    facts.duration = std::isfinite(duration) ? duration : 0;
    const auto recorded = captureDate(textOf(*video, AVMetadataCommonKeyCreationDate));
    facts.captureDate = recorded ? recorded : captureDate(video->headerCreationTime());
    facts.location = locationFromISO6709(textOf(*video, AVMetadataCommonKeyLocation));
    facts.contentIdentifier = textOf(*video, kContentIdentifierKey);
    const auto tracks = video->tracksWithMediaType(AVMediaTypeVideo);
    if (!tracks.empty()) {
        addTrack(facts, tracks.front());
        facts.mediaSubtypes = subtypesOf(*video, tracks.front(), lastPathComponent(path));
    }
    return facts;
}

} // namespace exifcard
