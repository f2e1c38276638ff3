#include "platform/imageio/MakerNote.h"
#include "platform/imageio/MakerNoteFormat.h"
#include "platform/imageio/TiffBlock.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace exifcard {
namespace {

/// A camera writes its note before the picture; the largest, with a preview inside, lie below a megabyte.
constexpr std::size_t kMostStructureBytes = std::size_t(4) << 20U;
constexpr std::size_t kMostNameBytes = 256;
constexpr std::size_t kEntrySize = 12;
constexpr std::size_t kInlineSize = 4;

/// Widest aperture, focal lengths and name of the lens.
constexpr std::uint16_t kLensHints[] = {0x9205, 0x920a, 0xa405, 0xa434};
constexpr std::size_t kMostHintBytes = 128;

/// Writes numbers into bytes that are long enough for them.
class ByteWriter {
public:
    explicit ByteWriter(ByteOrder order) : _order(order) {}

    void writeShort(std::span<std::uint8_t> place, std::uint32_t number) const { write(place, number, 2); }
    void writeLong(std::span<std::uint8_t> place, std::size_t number) const { write(place, number, 4); }

private:
    void write(std::span<std::uint8_t> place, std::size_t number, std::size_t size) const {
        for (std::size_t index = 0; index < size; ++index) {
            const std::size_t shift = 8 * (_order == ByteOrder::Big ? size - 1 - index : index);
            place[index] = static_cast<std::uint8_t>(number >> shift);
        }
    }
    ByteOrder _order;
};

/// Moves the entries of needed tags to the front of the note's directory and drops the others. What they
/// point to stays where it is.
void keepTags(
    std::span<std::uint8_t> note, std::size_t directory, ByteOrder order, const NoteFormat& format) {
    const ByteView view(note, order);
    const std::size_t stated = view.shortAt(directory).value_or(0);
    std::size_t kept = 0;
    for (std::size_t index = 0; index < stated; ++index) {
        const auto entry = view.part(directory + 2 + index * kEntrySize, kEntrySize);
        if (entry.empty()) {
            break;
        }
        if (std::ranges::count(format.tags, ByteView::load<std::uint16_t>(entry.data(), order)) > 0) {
            std::ranges::copy(entry, note.subspan(directory + 2 + kept * kEntrySize).begin());
            ++kept;
        }
    }
    if (stated > 0) {
        ByteWriter(order).writeShort(note.subspan(directory), static_cast<std::uint32_t>(kept));
    }
}

/// Puts directories behind the note: the first with make and model, and the Exif one with the note.
class StructureBuilder {
public:
    explicit StructureBuilder(const MakerNote& note)
        : _note(note)
        , _writer(note.order)
        , _bytes(note.offset + note.length) {}

    std::vector<std::uint8_t> build(const NoteFormat& format);

private:
    void addShort(std::uint32_t number);
    void addLong(std::size_t number);
    void addEntry(std::uint16_t tag, TiffType type, std::size_t count, std::size_t value);
    void addEntry(const TiffEntry& entry, std::size_t place);
    std::size_t addBytes(std::span<const std::uint8_t> bytes);
    std::size_t addName(std::string_view name);
    std::size_t addExifDirectory();
    void addFirstDirectory(std::size_t exifDirectory);

    const MakerNote& _note;
    ByteWriter _writer;
    std::vector<std::uint8_t> _bytes;
};

void StructureBuilder::addShort(std::uint32_t number) {
    _bytes.resize(_bytes.size() + 2);
    _writer.writeShort(std::span(_bytes).last(2), number);
}

void StructureBuilder::addLong(std::size_t number) {
    _bytes.resize(_bytes.size() + 4);
    _writer.writeLong(std::span(_bytes).last(4), number);
}

void StructureBuilder::addEntry(std::uint16_t tag, TiffType type, std::size_t count, std::size_t value) {
    addShort(tag);
    addShort(static_cast<std::uint16_t>(type));
    addLong(count);
    addLong(value);
}

/// An entry whose bytes stand at `place`, or in the entry itself when they are that few.
void StructureBuilder::addEntry(const TiffEntry& entry, std::size_t place) {
    addEntry(entry.tag, entry.type, entry.count, place);
    if (entry.bytes.size() <= kInlineSize) {
        std::ranges::copy(entry.bytes, std::span(_bytes).last(kInlineSize).begin());
    }
}

std::size_t StructureBuilder::addBytes(std::span<const std::uint8_t> bytes) {
    const std::size_t place = _bytes.size();
    _bytes.insert(_bytes.end(), bytes.begin(), bytes.end());
    return place;
}

/// Adds the name with the NUL at its end; never so short that it would stand in the entry itself.
std::size_t StructureBuilder::addName(std::string_view name) {
    const std::size_t place = _bytes.size();
    _bytes.insert(_bytes.end(), name.begin(), name.end());
    _bytes.resize(std::max(_bytes.size(), place + kInlineSize) + 1);
    return place;
}

std::size_t StructureBuilder::addExifDirectory() {
    std::vector<std::pair<TiffEntry, std::size_t>> hints;
    for (const TiffEntry& hint : _note.lensHints) {
        if (hint.bytes.size() <= kMostHintBytes) {
            hints.emplace_back(hint, addBytes(hint.bytes));
        }
    }
    const std::size_t directory = _bytes.size();
    addShort(static_cast<std::uint32_t>(hints.size() + 1));
    for (const auto& [hint, place] : hints) {
        addEntry(hint, place);
    }
    addEntry(0x927c, TiffType::Undefined, _note.length, _note.offset);
    addLong(0);
    return directory;
}

void StructureBuilder::addFirstDirectory(std::size_t exifDirectory) {
    const std::size_t make = addName(_note.make);
    const std::size_t model = addName(_note.model);
    const std::size_t directory = _bytes.size();
    _writer.writeLong(std::span(_bytes).subspan(4), directory);
    addShort(3);
    addEntry(0x010f, TiffType::Ascii, model - make, make);
    addEntry(0x0110, TiffType::Ascii, directory - model, model);
    addEntry(0x8769, TiffType::Long, 1, exifDirectory);
    addLong(0);
}

std::vector<std::uint8_t> StructureBuilder::build(const NoteFormat& format) {
    std::ranges::copy(_note.block.first(2), _bytes.begin());
    _writer.writeShort(std::span(_bytes).subspan(2), 42);
    const auto copy = std::span(_bytes).last(_note.length);
    std::ranges::copy(_note.block.subspan(_note.offset, _note.length), copy.begin());
    const ByteOrder order = orderOfMakerNote(format, ByteView(copy, _note.order));
    keepTags(copy, directoryOfMakerNote(format, ByteView(copy, order)), order, format);
    addFirstDirectory(addExifDirectory());
    return std::move(_bytes);
}

} // namespace

bool isLensHint(std::uint16_t exifTag) {
    return std::ranges::count(kLensHints, exifTag) > 0;
}

std::vector<std::uint8_t> structureForMakerNote(const MakerNote& note) {
    const auto* const format = formatOfMakerNote(note);
    const bool isWritten = note.offset >= 8 && note.offset + note.length <= kMostStructureBytes &&
                           note.make.size() <= kMostNameBytes && note.model.size() <= kMostNameBytes;
    return format == nullptr || !isWritten ? std::vector<std::uint8_t>()
                                           : StructureBuilder(note).build(*format);
}

} // namespace exifcard
