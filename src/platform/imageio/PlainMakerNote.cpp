#include "platform/imageio/PlainMakerNote.h"

#include "platform/imageio/MakerNoteFormat.h"
#include "platform/imageio/TextEncoding.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::size_t kMostValues = 16;

/// A tag of a directory that holds numbers of 16 bits, each a tag of its own by its place.
struct NumberArray {
    std::string_view group; ///< Of its elements.
    std::uint16_t tag;
};
constexpr NumberArray kArrays[] = {{"CanonCs", 0x0001}, {"CanonSi", 0x0004}};
/// The one element that takes more than one number: the focal lengths of Canon's lens.
constexpr WantedTag kCanonLens = {"CanonCs", 0x0017};
constexpr std::size_t kNumbersOfCanonLens = 3;

NoteTag noteTag(const WantedTag& wanted, const TiffEntry& entry) {
    NoteTag tag;
    tag.group = wanted.group;
    tag.tag = wanted.tag;
    tag.isText = entry.type == TiffType::Ascii;
    tag.text = textView(entry.bytes);
    tag.count = entry.count;
    for (std::size_t index = 0; index < std::min<std::size_t>(entry.count, kMostValues); ++index) {
        tag.integers.push_back(integerAt(entry, index).value_or(0));
    }
    return tag;
}

/// The element of an array as an entry.
std::optional<TiffEntry> elementOf(const TiffEntry& array, const WantedTag& wanted) {
    constexpr std::size_t kSize = sizeof(std::uint16_t);
    const bool isLens = wanted.group == kCanonLens.group && wanted.tag == kCanonLens.tag;
    const std::size_t count = isLens ? kNumbersOfCanonLens : 1;
    const std::size_t begin = wanted.tag * kSize;
    if (begin + count * kSize > array.bytes.size()) {
        return std::nullopt;
    }
    return TiffEntry{wanted.tag, TiffType::Short, static_cast<std::uint32_t>(count),
        array.bytes.subspan(begin, count * kSize), array.order};
}

std::optional<TiffEntry> entryFor(
    const TiffDirectory& directory, const WantedTag& wanted, std::string_view plainGroup) {
    if (wanted.group == plainGroup) {
        return directory.find(wanted.tag);
    }
    const auto* const array = std::ranges::find(kArrays, wanted.group, &NumberArray::group);
    const bool isOfMaker = array != std::end(kArrays) && wanted.group.starts_with(plainGroup);
    const auto entry = isOfMaker ? directory.find(array->tag) : std::nullopt;
    return entry ? elementOf(*entry, wanted) : std::nullopt;
}

/// The note's directory. Places in it count from the structure around the note, but where the note tells its
/// own.
TiffDirectory directoryOf(const MakerNote& note, const NoteFormat& format) {
    const auto bytes = note.block.subspan(note.offset, note.length);
    const ByteOrder order = orderOfMakerNote(format, ByteView(bytes, note.order));
    const ByteView view(bytes, order);
    const std::size_t place = directoryOfMakerNote(format, view);
    if (format.directoryRule == DirectoryRule::PointedToFromNote) {
        return {view, static_cast<std::uint32_t>(place)};
    }
    const ByteView structure(note.block.first(note.offset + note.length), order);
    return {structure, static_cast<std::uint32_t>(note.offset + place)};
}

} // namespace

std::optional<std::vector<NoteTag>> tagsOfPlainMakerNote(
    const MakerNote& note, std::span<const WantedTag> wanted) {
    const auto* const format = formatOfMakerNote(note);
    if (format == nullptr || format->plainGroup.empty()) {
        return std::nullopt;
    }
    const TiffDirectory directory = directoryOf(note, *format);
    std::vector<NoteTag> tags;
    for (const WantedTag& tag : wanted) {
        if (const auto entry = entryFor(directory, tag, format->plainGroup)) {
            tags.push_back(noteTag(tag, *entry));
        }
    }
    return tags;
}

} // namespace exifcard
