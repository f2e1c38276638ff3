#pragma once

#include "platform/foundation/Data.h"

#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

/// One text chunk of a PNG.
struct PngText {
    std::string keyword;
    std::string text; ///< UTF-8; the plain bytes where the text holds an embedded profile.
};

/// @param chunkName  "tEXt", "zTXt" or "iTXt".
/// @return Nothing for a malformed chunk and for one that would inflate beyond reason.
std::optional<PngText> readPngText(std::string_view chunkName, const Data& content);

/// The colour profile of an "iCCP" chunk; empty for a malformed one.
Data pngProfile(const Data& content);

/// A block that image tools write as hexadecimal digits into a text.
struct PngEmbeddedProfile {
    std::string name; ///< "exif", "APP1", "iptc", "8bim" or "xmp".
    Data content;     ///< Of Exif data, from the TIFF header on.
};

/// @return Nothing for another text.
std::optional<PngEmbeddedProfile> embeddedProfile(const PngText& text);

} // namespace exifcard
