#include "platform/photos/import/FileGroup.h"

#include <algorithm>
#include <map>
#include <utility>

namespace exifcard {
namespace {

/// What the files of a group share. The sidecar "IMG.JPG.xmp" belongs to "IMG.JPG", and so to "img".
std::string groupNameOf(const ScannedFile& file) {
    std::string shot = shotOfName(file.name);
    const bool namesFile = file.kind == FileKind::Sidecar && fileKindOfName(shot) != FileKind::Other;
    return namesFile ? shotOfName(shot) : shot;
}

/// The first file that fits and is not taken yet.
template<typename Condition>
std::optional<std::size_t> takeFile(
    const FileGroup& group, std::vector<bool>& isTaken, const Condition& condition) {
    for (std::size_t index = 0; index < group.files.size(); ++index) {
        if (!isTaken[index] && condition(group.files[index])) {
            isTaken[index] = true;
            return index;
        }
    }
    return std::nullopt;
}

} // namespace

std::int64_t FileGroup::sizeInBytes() const {
    std::int64_t size = 0;
    for (const ScannedFile& file : files) {
        size += file.stamp.sizeInBytes;
    }
    return size;
}

std::vector<FileGroup> groupsOfFiles(std::vector<ScannedFile> files) {
    std::vector<FileGroup> groups;
    std::map<std::string, std::size_t> positions;
    for (ScannedFile& file : files) {
        const auto [position, isNew] = positions.emplace(groupNameOf(file), groups.size());
        if (isNew) {
            groups.emplace_back();
        }
        FileGroup& group = groups[position->second];
        (file.kind == FileKind::Sidecar ? group.sidecars : group.files).push_back(std::move(file));
    }
    std::erase_if(groups, [](const FileGroup& group) { return group.files.empty(); });
    return groups;
}

std::vector<AssetFiles> assetsOfGroup(const FileGroup& group) {
    std::vector<AssetFiles> assets;
    std::vector<bool> isTaken(group.files.size());
    const auto isPicture = [](const ScannedFile& file) { return isPairablePicture(file.name); };
    if (const auto primary = takeFile(group, isTaken, isPicture)) {
        const auto isRaw = [](const ScannedFile& file) { return file.kind == FileKind::Raw; };
        const auto isVideo = [](const ScannedFile& file) { return isPairableVideo(file.name); };
        assets.push_back({.primary = *primary,
            .raw = takeFile(group, isTaken, isRaw),
            .video = takeFile(group, isTaken, isVideo)});
    }
    while (const auto rest = takeFile(group, isTaken, [](const ScannedFile& /*file*/) { return true; })) {
        assets.push_back({.primary = *rest});
    }
    return assets;
}

const ScannedFile* sidecarOf(const FileGroup& group, const ScannedFile& file) {
    const auto withShot = [&group](const std::string& shot) -> const ScannedFile* {
        const auto found = std::ranges::find_if(
            group.sidecars, [&shot](const ScannedFile& sidecar) { return shotOfName(sidecar.name) == shot; });
        return found == group.sidecars.end() ? nullptr : &*found;
    };
    std::string wholeName = file.name + ".xmp";
    const ScannedFile* const ofFile = withShot(shotOfName(wholeName));
    return ofFile != nullptr ? ofFile : withShot(shotOfName(file.name));
}

} // namespace exifcard
