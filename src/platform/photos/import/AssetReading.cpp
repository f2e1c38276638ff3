#include "platform/photos/import/AssetReading.h"

#include "platform/foundation/Data.h"
#include "platform/foundation/FileFault.h"
#include "platform/photos/import/Fingerprint.h"
#include "platform/photos/import/PictureFacts.h"
#include "platform/photos/import/SidecarFacts.h"
#include "platform/photos/import/VideoFacts.h"

#include <utility>

namespace exifcard {
namespace {

/// A file that is being written may change while it is read; one that still does after so many readings is
/// left for the next import.
constexpr int kMostReadings = 3;

/// Nobody writes a sidecar of more; it is no sidecar then.
constexpr std::int64_t kLongestSidecar = 16 << 20;

/// A live photo's video takes three seconds, another phone's no more than six. A longer one of the same name
/// is a video of its own, unless both tell that they belong together.
constexpr double kLongestLiveVideo = 10;

/// Reads one group.
class GroupReader {
public:
    GroupReader(const std::string& folder, const FileGroup& group) : _folder(folder), _group(group) {}

    ReadGroup read() {
        for (const AssetFiles& files : assetsOfGroup(_group)) {
            addAsset(files);
        }
        return std::move(_found);
    }

private:
    void addAsset(const AssetFiles& files) {
        auto primary = readFile(_group.files[files.primary]);
        auto raw = files.raw ? readFile(_group.files[*files.raw]) : std::nullopt;
        auto video = files.video ? readFile(_group.files[*files.video]) : std::nullopt;
        if (!primary) { // Each of the others stands for itself then.
            primary = std::exchange(raw, std::nullopt);
        }
        if (primary) {
            ReadAsset asset{.primary = std::move(*primary), .raw = std::move(raw)};
            if (video && isLivePair(asset.primary.facts, video->facts)) {
                asset.video = std::exchange(video, std::nullopt);
            }
            add(std::move(asset));
        }
        if (video) {
            add({.primary = std::move(*video)});
        }
    }

    static bool isLivePair(const MediaFacts& picture, const MediaFacts& video) {
        if (picture.contentIdentifier.empty() || video.contentIdentifier.empty()) {
            return video.duration <= kLongestLiveVideo;
        }
        return picture.contentIdentifier == video.contentIdentifier;
    }

    void add(ReadAsset asset) {
        completeFromRaw(asset);
        completeFromSidecar(asset.primary.facts, asset.primary.file);
        if (asset.raw) {
            completeFromSidecar(asset.primary.facts, asset.raw->file);
        }
        if (_found.assets.empty()) {
            asset.sidecars = _group.sidecars;
        }
        _found.assets.push_back(std::move(asset));
    }

    static void completeFromRaw(ReadAsset& asset) {
        if (asset.raw) {
            MediaFacts& facts = asset.primary.facts;
            const MediaFacts& raw = asset.raw->facts;
            facts.captureDate = facts.captureDate ? facts.captureDate : raw.captureDate;
            facts.location = facts.location ? facts.location : raw.location;
        }
    }

    void completeFromSidecar(MediaFacts& facts, const ScannedFile& file) const {
        const ScannedFile* const sidecar = sidecarOf(_group, file);
        if (sidecar == nullptr || sidecar->stamp.sizeInBytes > kLongestSidecar) {
            return;
        }
        if (const auto content = Data::mappedFile(pathOf(*sidecar))) {
            addSidecar(facts, *content);
        }
    }

    std::optional<ReadFile> readFile(const ScannedFile& file) {
        ReadFile read{.file = file};
        for (int reading = 0; reading < kMostReadings; ++reading) {
            auto facts = readOnce(read);
            const auto stamp = stampOfFile(pathOf(file));
            if (stamp == read.file.stamp) {
                return facts ? std::move(facts) : refused(file, faultOf(file));
            }
            if (!stamp) {
                return std::nullopt; // It was taken away meanwhile, which is nobody's fault.
            }
            read.file.stamp = *stamp;
        }
        return refused(file, "is being written; it comes in with the next import");
    }

    std::optional<ReadFile> readOnce(ReadFile read) const {
        const std::string path = pathOf(read.file);
        const auto content = Data::mappedFileForEnds(path);
        if (!content || content->empty()) {
            return std::nullopt;
        }
        auto facts =
            read.file.kind == FileKind::Video ? factsOfVideo(path) : factsOfPicture(*content, read.file.name);
        read.quickFingerprint = quickFingerprint(*content);
        if (!facts || content->wasCutShort()) {
            return std::nullopt;
        }
        read.facts = std::move(*facts);
        return read;
    }

    std::string faultOf(const ScannedFile& file) const {
        if (auto fault = faultOfFile(pathOf(file)); !fault.empty()) {
            return fault;
        }
        if (file.stamp.sizeInBytes == 0) {
            return "is empty";
        }
        return file.kind == FileKind::Video ? "is no video, or is damaged" : "is no picture, or is damaged";
    }

    std::optional<ReadFile> refused(const ScannedFile& file, std::string cause) {
        _found.problems.push_back({pathOf(file), std::move(cause)});
        return std::nullopt;
    }

    std::string pathOf(const ScannedFile& file) const { return _folder + "/" + file.name; }

    const std::string& _folder;
    const FileGroup& _group;
    ReadGroup _found;
};

} // namespace

ReadGroup readGroup(const std::string& folder, const FileGroup& group) {
    return GroupReader(folder, group).read();
}

} // namespace exifcard
