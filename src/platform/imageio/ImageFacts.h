#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Dictionary.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace exifcard {

struct LibraryMetadata;

using NamedDictionary = std::pair<std::string_view, DictionaryPtr>;

/// What the container of one image tells, and where in it the metadata blocks
/// lie. The blocks are slices of the file, read later.
struct ImageFacts {
    std::int64_t width = 0; ///< Of the stored pixels; 0 when unknown.
    std::int64_t height = 0;
    int depth = 0;                    ///< Bits per component; 0 when unknown.
    std::string_view colorModel = {}; ///< One of the values of "ColorModel"; empty when unknown.
    bool hasAlpha = false;
    bool isFloat = false;
    bool isIndexed = false;
    bool isSRgb = false;            ///< The container says so, without a profile.
    std::optional<int> orientation; ///< 1 to 8, where the container itself tells it.
    std::optional<double> dpiWidth;
    std::optional<double> dpiHeight;

    Data exif;                   ///< From the TIFF header on.
    std::uint32_t directory = 0; ///< Where in `exif` the image's directory lies; 0 for the first.
    bool isTiffFile = false;     ///< `exif` is the file itself, not a block within it.
    // In a CR3 these are no parts of `exif` but structures of their own.
    Data exifDirectory;
    Data makerNote;
    Data gpsDirectory;
    Data xmp;
    Data iptc; ///< Datasets of the IIM.
    Data iccProfile;
    /// Dictionaries of the container's own, such as "{JFIF}", under their names.
    std::vector<NamedDictionary> dictionaries;
};

/// The properties dictionary of the image.
DictionaryPtr propertiesFromFacts(const ImageFacts& facts);
/// See `CGImageSourceCopyLibraryMetadata`.
LibraryMetadata libraryMetadataFromFacts(const ImageFacts& facts);

} // namespace exifcard
