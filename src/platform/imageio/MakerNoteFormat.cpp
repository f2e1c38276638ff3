#include "platform/imageio/MakerNoteFormat.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::uint16_t kNikonTags[] = {0x0001, 0x0002, 0x0003, 0x0004, 0x0005, 0x0006, 0x0007, 0x0008,
    0x000f, 0x0012, 0x001d, 0x0080, 0x0082, 0x0083, 0x0084, 0x0085, 0x0086, 0x0089, 0x0098, 0x00a0, 0x00a7};
constexpr std::uint16_t kOlympusTags[] = {0x1023, 0x2010};
constexpr std::uint16_t kPentaxTags[] = {0x0006, 0x0007, 0x003f, 0x005d, 0x0207, 0x0229};
constexpr std::uint16_t kSonyTags[] = {0xb027};
constexpr std::uint16_t kMinoltaTags[] = {0x010c};
constexpr std::uint16_t kSigmaTags[] = {0x0002, 0x0017};

constexpr auto kOfStructure = OrderRule::OfStructure;
constexpr auto kMarked = OrderRule::Marked;
constexpr auto kAtPlace = DirectoryRule::AtPlace;

constexpr NoteFormat kFormats[] = {
    {"Canon", "", kOfStructure, 0, kAtPlace, 0, {}, "Canon"},
    {"N", {"Nikon\0\2", 7}, kMarked, 10, DirectoryRule::PointedToFromMark, 14, kNikonTags},
    {"O", {"OLYMPUS\0", 8}, kMarked, 8, kAtPlace, 12, kOlympusTags},
    {"OM", {"OM SYSTEM\0\0\0", 12}, kMarked, 12, kAtPlace, 16, kOlympusTags},
    {"O", {"OLYMP\0", 6}, kOfStructure, 0, kAtPlace, 8, kOlympusTags},
    {"FUJI", "FUJIFILM", OrderRule::Little, 0, DirectoryRule::PointedToFromNote, 8, {}, "Fujifilm"},
    {"Panasonic", {"Panasonic\0\0\0", 12}, kOfStructure, 0, kAtPlace, 12, {}, "Panasonic"},
    {"", {"PENTAX \0", 8}, kMarked, 8, kAtPlace, 10, kPentaxTags},
    {"", {"AOC\0", 4}, kMarked, 4, kAtPlace, 6, kPentaxTags},
    {"SONY", "SONY", kOfStructure, 0, kAtPlace, 12, kSonyTags},
    {"SONY", "", kOfStructure, 0, kAtPlace, 0, kSonyTags},
    {"Minolta", "", kOfStructure, 0, kAtPlace, 0, kMinoltaTags},
    {"KONICA", "", kOfStructure, 0, kAtPlace, 0, kMinoltaTags},
    {"Konica", "", kOfStructure, 0, kAtPlace, 0, kMinoltaTags},
    {"SIGMA", {"SIGMA\0\0\0", 8}, kOfStructure, 0, kAtPlace, 10, kSigmaTags},
    {"SIGMA", {"FOVEON\0\0", 8}, kOfStructure, 0, kAtPlace, 10, kSigmaTags},
};

} // namespace

const NoteFormat* formatOfMakerNote(const MakerNote& note) {
    const ByteView view(note.block.subspan(note.offset, note.length), note.order);
    const auto* const format = std::ranges::find_if(kFormats, [&](const NoteFormat& known) {
        return note.make.starts_with(known.make) && view.hasTextAt(0, known.signature);
    });
    return format != std::end(kFormats) ? format : nullptr;
}

ByteOrder orderOfMakerNote(const NoteFormat& format, const ByteView& note) {
    if (format.orderRule == OrderRule::Little) {
        return ByteOrder::Little;
    }
    if (format.orderRule == OrderRule::Marked && note.hasTextAt(format.orderPlace, "II")) {
        return ByteOrder::Little;
    }
    if (format.orderRule == OrderRule::Marked && note.hasTextAt(format.orderPlace, "MM")) {
        return ByteOrder::Big;
    }
    return note.order();
}

std::size_t directoryOfMakerNote(const NoteFormat& format, const ByteView& note) {
    if (format.directoryRule == DirectoryRule::AtPlace) {
        return format.directoryPlace;
    }
    const std::size_t pointer = note.longAt(format.directoryPlace).value_or(0);
    return format.directoryRule == DirectoryRule::PointedToFromMark ? format.orderPlace + pointer : pointer;
}

} // namespace exifcard
