#include "platform/photos/import/FileKind.h"

#include "platform/foundation/ASCII.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace exifcard {
namespace {

struct ExtensionKind {
    std::string_view extension;
    FileKind kind;
    bool isPairable = false; ///< A camera or phone writes it as one half of a shot.
};

constexpr ExtensionKind kExtensions[] = {
    {"jpg", FileKind::Picture, true},
    {"jpeg", FileKind::Picture, true},
    {"heic", FileKind::Picture, true},
    {"heif", FileKind::Picture, true},
    {"hif", FileKind::Picture, true},
    {"jpe", FileKind::Picture},
    {"avif", FileKind::Picture},
    {"png", FileKind::Picture},
    {"gif", FileKind::Picture},
    {"webp", FileKind::Picture},
    {"tif", FileKind::Picture},
    {"tiff", FileKind::Picture},
    {"bmp", FileKind::Picture},
    {"dng", FileKind::Raw},
    {"cr2", FileKind::Raw},
    {"cr3", FileKind::Raw},
    {"crw", FileKind::Raw},
    {"nef", FileKind::Raw},
    {"nrw", FileKind::Raw},
    {"arw", FileKind::Raw},
    {"srf", FileKind::Raw},
    {"sr2", FileKind::Raw},
    {"raf", FileKind::Raw},
    {"orf", FileKind::Raw},
    {"rw2", FileKind::Raw},
    {"pef", FileKind::Raw},
    {"srw", FileKind::Raw},
    {"rwl", FileKind::Raw},
    {"3fr", FileKind::Raw},
    {"fff", FileKind::Raw},
    {"mrw", FileKind::Raw},
    {"dcr", FileKind::Raw},
    {"erf", FileKind::Raw},
    {"mos", FileKind::Raw},
    {"mov", FileKind::Video, true},
    {"mp4", FileKind::Video},
    {"m4v", FileKind::Video},
    {"3gp", FileKind::Video},
    {"avi", FileKind::Video},
    {"mts", FileKind::Video},
    {"m2ts", FileKind::Video},
    {"mkv", FileKind::Video},
    {"webm", FileKind::Video},
    {"xmp", FileKind::Sidecar},
};

constexpr ExtensionKind kNoKind = {"", FileKind::Other};

const ExtensionKind& kindOfName(std::string_view name) {
    const std::size_t point = name.rfind('.');
    if (name.starts_with('.') || point == std::string_view::npos) {
        return kNoKind;
    }
    const auto* const known = std::ranges::find_if(kExtensions, [&](const ExtensionKind& kind) {
        return isEqualIgnoringCase(name.substr(point + 1), kind.extension);
    });
    return known == std::end(kExtensions) ? kNoKind : *known;
}

bool isPairable(std::string_view name, FileKind kind) {
    const ExtensionKind& known = kindOfName(name);
    return known.kind == kind && known.isPairable;
}

} // namespace

FileKind fileKindOfName(std::string_view name) {
    return kindOfName(name).kind;
}

bool isPairablePicture(std::string_view name) {
    return isPairable(name, FileKind::Picture);
}

bool isPairableVideo(std::string_view name) {
    return isPairable(name, FileKind::Video);
}

std::string shotOfName(std::string_view name) {
    return lowerCaseASCII(name.substr(0, name.rfind('.')));
}

} // namespace exifcard
