#include "platform/photos/RenditionFile.h"

#include <algorithm>
#include <span>

namespace exifcard {
namespace {

using Type = PHAssetResourceType;

// The best comes first.
constexpr Type kCurrent[] = {
    Type::FullSizePhoto, Type::FullSizeVideo, Type::Photo, Type::Video, Type::AlternatePhoto};
constexpr Type kOriginal[] = {Type::Photo, Type::Video, Type::AlternatePhoto};

} // namespace

std::optional<StoredFile> renditionOf(
    const std::vector<StoredFile>& files, PHImageRequestOptionsVersion version) {
    const bool isCurrent = version == PHImageRequestOptionsVersion::Current;
    for (const Type type : isCurrent ? std::span<const Type>(kCurrent) : std::span<const Type>(kOriginal)) {
        const auto found = std::ranges::find(files, type, &StoredFile::type);
        if (found != files.end()) {
            return *found;
        }
    }
    return std::nullopt;
}

BroughtFile broughtFile(const StoredFile& file,
    bool mayUseNetwork,
    const std::function<bool(double fraction, const std::optional<PHError>& error)>& progress) {
    BroughtFile brought{.path = file.localFile()};
    if (brought.path) {
        return brought;
    }
    brought.isElsewhere = file.isElsewhere();
    if (!brought.isElsewhere || !mayUseNetwork) {
        return brought;
    }
    const auto tell = [&progress](double fraction, const std::optional<PHError>& error) {
        return !progress || progress(fraction, error);
    };
    brought.error =
        file.source->bring(file.file, [&tell](double fraction) { return tell(fraction, std::nullopt); });
    brought.path = brought.error ? std::nullopt : file.localFile();
    brought.wasCancelled = brought.error && brought.error->code == PHErrorCode::UserCancelled;
    brought.isElsewhere = !brought.path;
    if (brought.error && !brought.wasCancelled) {
        tell(0, brought.error);
    }
    return brought;
}

} // namespace exifcard
