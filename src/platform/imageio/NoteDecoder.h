#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exifcard {

// What the loadable module "notes" offers: the formats of single makers, which Exiv2 decodes. Header-only:
// program and module share no other code.

/// A tag to look for in a maker note.
struct WantedTag {
    std::string_view group; ///< As Exiv2 calls the part of the note: "CanonCs".
    std::uint16_t tag = 0;
    bool isWantedInWords = false;
};

/// A tag that was found.
struct NoteTag {
    std::string group;
    std::uint16_t tag = 0;
    bool isText = false;                ///< By its type, ASCII.
    std::string text;                   ///< What it holds as text, or its bytes where it is of another type.
    std::size_t count = 0;              ///< How many values it has.
    std::vector<std::int64_t> integers; ///< The first sixteen, at most.
    std::vector<std::pair<std::int32_t, std::int32_t>>
        fractions;       ///< The first sixteen, as they can be read as such.
    std::string inWords; ///< What Exiv2 says of it, where wanted.
};

/// What a CRW's own structure tells.
struct CanonCrw {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::vector<std::uint8_t> exif; ///< As a TIFF structure.
};

/// Told why something was left out.
using FaultReport = void(const char* reason);

/// Decodes what makers keep in forms of their own. Safe to call on any thread. The bytes are untrusted: what
/// is broken is reported and left out.
class NoteDecoder {
public:
    NoteDecoder() = default;
    NoteDecoder(const NoteDecoder&) = delete;
    NoteDecoder& operator=(const NoteDecoder&) = delete;

    /// The wanted tags of the maker note in a TIFF structure, in the note's order; one may occur twice.
    virtual std::vector<NoteTag> tagsOfMakerNote(std::span<const std::uint8_t> structure,
        std::span<const WantedTag> wanted,
        FaultReport& report) const = 0;

    virtual std::optional<CanonCrw> canonCrw(
        std::span<const std::uint8_t> file, FaultReport& report) const = 0;

protected:
    ~NoteDecoder() = default;
};

/// What the module exports under this name.
using NoteDecoderEntry = const NoteDecoder*();
inline constexpr const char* kNoteDecoderEntry = "exifcardNoteDecoder";

} // namespace exifcard
