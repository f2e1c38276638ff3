// The module "notes": formats of single makers, by Exiv2.
#include "platform/imageio/NoteDecoder.h"

#include <exiv2/error.hpp>
#include <exiv2/exif.hpp>
#include <exiv2/image.hpp>

#include <algorithm>
#include <exception>

namespace exifcard {
namespace {

constexpr long kMostValues = 16;

/// What is wanted of the tag; nothing for one that is not. Two may want it.
std::optional<WantedTag> findWanted(std::span<const WantedTag> wanted, const Exiv2::Exifdatum& datum) {
    std::optional<WantedTag> found;
    const std::string group = datum.groupName();
    for (const WantedTag& tag : wanted) {
        if (tag.tag == datum.tag() && tag.group == group) {
            found = {tag.group, tag.tag, tag.isWantedInWords || (found && found->isWantedInWords)};
        }
    }
    return found;
}

std::string textOf(const Exiv2::Exifdatum& datum) {
    if (datum.typeId() == Exiv2::asciiString) {
        return datum.toString();
    }
    std::vector<Exiv2::byte> bytes(static_cast<std::size_t>(datum.size()));
    datum.copy(bytes.data(), Exiv2::bigEndian);
    return {bytes.begin(), bytes.end()};
}

NoteTag noteTag(const Exiv2::Exifdatum& datum, const WantedTag& wanted, const Exiv2::ExifData& all) {
    NoteTag tag;
    tag.group = wanted.group;
    tag.tag = datum.tag();
    tag.isText = datum.typeId() == Exiv2::asciiString;
    tag.text = textOf(datum);
    tag.count = static_cast<std::size_t>(datum.count());
    for (long index = 0; index < std::min(datum.count(), kMostValues); ++index) {
        tag.integers.emplace_back(datum.toLong(index));
        tag.fractions.emplace_back(datum.toRational(index));
    }
    if (wanted.isWantedInWords) {
        tag.inWords = datum.print(&all);
    }
    return tag;
}

/// Calls `use`: what Exiv2, and the standard library in it, throws about broken data ends it and nothing
/// else.
template<typename Use>
void guarded(FaultReport& report, const Use& use) {
    try {
        use();
    } catch (const std::exception& error) {
        report(error.what());
    }
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted through its base.
class Exiv2Decoder final : public NoteDecoder {
public:
    Exiv2Decoder() { Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute); }

    std::vector<NoteTag> tagsOfMakerNote(std::span<const std::uint8_t> structure,
        std::span<const WantedTag> wanted,
        FaultReport& report) const override {
        std::vector<NoteTag> tags;
        guarded(report, [&] {
            Exiv2::ExifData all;
            Exiv2::ExifParser::decode(all, structure.data(), static_cast<std::uint32_t>(structure.size()));
            for (const Exiv2::Exifdatum& datum : all) {
                if (const auto found = findWanted(wanted, datum)) {
                    guarded(report, [&] { tags.push_back(noteTag(datum, *found, all)); });
                }
            }
        });
        return tags;
    }

    std::optional<CanonCrw> canonCrw(std::span<const std::uint8_t> file, FaultReport& report) const override {
        std::optional<CanonCrw> crw;
        guarded(report, [&] {
            const auto image = Exiv2::ImageFactory::open(file.data(), static_cast<long>(file.size()));
            image->readMetadata();
            CanonCrw read = {image->pixelWidth(), image->pixelHeight(), {}};
            Exiv2::ExifParser::encode(read.exif, Exiv2::littleEndian, image->exifData());
            crw = std::move(read);
        });
        return crw;
    }
};

} // namespace
} // namespace exifcard

extern "C" [[gnu::visibility("default")]] const exifcard::NoteDecoder* exifcardNoteDecoder() {
    static const exifcard::Exiv2Decoder decoder;
    return &decoder;
}
