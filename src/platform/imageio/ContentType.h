#pragma once

#include "platform/foundation/Data.h"

#include <string_view>

namespace exifcard {

/// The structure in which a file keeps its images.
enum class Container {
    None,
    Jpeg,
    Png,
    Gif,
    Bmp,
    WebP,
    Heif,
    Tiff,
    TiffRaw,
    PanasonicRaw,
    FujiRaw,
    MinoltaRaw,
    CanonCrw
};

struct ContentType {
    Container container = Container::None;
    std::string_view identifier = {}; ///< "public.jpeg"; empty for what is no image.
};

/// Recognises a file by its content alone; looks at its first bytes, in a TIFF also at the directories.
ContentType contentTypeOf(const Data& file);

} // namespace exifcard
