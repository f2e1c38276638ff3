#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// What a file is to the library.
enum class FileKind {
    Other, ///< Nothing that the library takes.
    Picture,
    Raw,
    Video,
    Sidecar, ///< What an editor wrote about the picture beside it.
};

/// Told by the extension alone, in either case; a hidden file is nothing that the library takes.
FileKind fileKindOfName(std::string_view name);

/// Whether a picture of this name may have a raw file or a video of the same name as its other half.
bool isPairablePicture(std::string_view name);

/// Whether a video of this name may be the moving half of a live photo.
bool isPairableVideo(std::string_view name);

/// The name without its extension, in lower case where it is ASCII: the files of one shot share it.
std::string shotOfName(std::string_view name);

} // namespace exifcard
