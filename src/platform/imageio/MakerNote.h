#pragma once

#include "platform/foundation/Dictionary.h"
#include "platform/imageio/ByteView.h"
#include "platform/imageio/ImageFacts.h"
#include "platform/imageio/PropertyTable.h"
#include "platform/imageio/TiffBlock.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// The block in which a camera keeps what the standard has no tags for.
struct MakerNote {
    std::span<const std::uint8_t> block; ///< The TIFF structure around the note, from its header on.
    ByteOrder order = ByteOrder::Little; ///< Of that structure.
    std::size_t offset = 0;              ///< Where in `block` the note begins.
    std::size_t length = 0;              ///< Lies inside.
    std::string make;
    std::string model;
    /// Tags of the Exif directory by which Exiv2 tells lenses of the same number apart.
    std::vector<TiffEntry> lensHints;
};

/// Whether a tag of the Exif directory is such a hint.
bool isLensHint(std::uint16_t exifTag);

/// A TIFF structure of its own with the note at the same offset as before, make,
/// model and the hints, and nothing else; of the note just the tags that the properties
/// need, because Exiv2 takes its time for each one, and Sony writes hundreds.
///
/// @return Empty for the note of a maker of whom the properties need nothing
///         that Exiv2 would read, and for one that no camera writes.
std::vector<std::uint8_t> structureForMakerNote(const MakerNote& note);

/// Adds what the note tells about lens and body to `aux`.
/// @return The maker's own dictionaries, "{PictureStyle}" among them, under their names.
std::vector<NamedDictionary> readMakerNote(const MakerNote& note, PropertyCollector& aux);

/// "{MakerApple}": the tags under their numbers. Null for a note of another maker.
DictionaryPtr appleMakerNote(std::span<const std::uint8_t> note);

} // namespace exifcard
