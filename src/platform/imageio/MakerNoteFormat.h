#pragma once

#include "platform/imageio/MakerNote.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace exifcard {

/// How a note says in which byte order its directory is written.
enum class OrderRule { OfStructure, Little, Marked };
/// How a note says where its directory begins.
enum class DirectoryRule { AtPlace, PointedToFromNote, PointedToFromMark };

/// The form of a maker's notes; places count from the note's beginning.
struct NoteFormat {
    std::string_view make; ///< How the maker's name begins.
    std::string_view signature;
    OrderRule orderRule;
    std::size_t orderPlace;
    DirectoryRule directoryRule;
    std::size_t directoryPlace;
    std::span<const std::uint16_t>
        tags; ///< Those that the properties need, with those that it takes to decode them.
    /// Of a plain directory, as any TIFF has it: the group that its tags are in. Empty where Exiv2 is asked.
    std::string_view plainGroup = {};
};

/// Null for the note of a maker of whom the properties need nothing.
const NoteFormat* formatOfMakerNote(const MakerNote& note);

/// The byte order of the note's directory.
/// @param note  From its beginning, in the order of the structure around it.
ByteOrder orderOfMakerNote(const NoteFormat& format, const ByteView& note);

/// Where in the note its directory begins.
std::size_t directoryOfMakerNote(const NoteFormat& format, const ByteView& note);

} // namespace exifcard
