#include "platform/imageio/ExifProperties.h"

#include "platform/foundation/NumberText.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/TiffBlock.h"
#include "platform/imageio/TiffValue.h"

#include <algorithm>
#include <iterator>

namespace exifcard {
namespace {

constexpr std::uint16_t kExifPointer = 0x8769;
constexpr std::uint16_t kGpsPointer = 0x8825;
constexpr std::uint16_t kInteroperabilityPointer = 0xa005;
constexpr std::uint16_t kInteroperabilityIndex = 0x0001;
constexpr std::uint16_t kMakerNote = 0x927c;
constexpr std::uint16_t kRating = 0x4746;
/// Tags of the first directory that tell of the pixels of a TIFF file, and of nothing inside another file.
constexpr std::uint16_t kPixelTags[] = {0x0103, 0x0106, 0x0142, 0x0143};

class ExifReader {
public:
    ExifReader(const ImageFacts& facts, bool readsAllMakerNotes)
        : _facts(facts)
        , _readsAllMakerNotes(readsAllMakerNotes) {}

    ExifProperties read(const std::vector<XmpProperty>& packet);

private:
    void readDirectories(const TiffBlock& block);
    void readFirstDirectory(const TiffDirectory& directory);
    void readExifDirectory(const TiffBlock& block, const TiffDirectory& directory);
    void readGpsDirectory(const TiffDirectory& directory);
    void readBlocksOfTheirOwn();
    void noteMakerNote(const TiffBlock& block, std::span<const std::uint8_t> note);
    void addPacket(const std::vector<XmpProperty>& packet);
    void addMakerNote();

    const ImageFacts& _facts;
    const bool _readsAllMakerNotes;
    ExifProperties _read;
    MakerNote _note;
};

/// Calls `use` with each entry of the directory.
template<typename Use>
void forEachEntry(const TiffDirectory& directory, const Use& use) {
    for (std::uint32_t index = 0; index < directory.count(); ++index) {
        if (const auto entry = directory.entryAt(index)) {
            use(*entry);
        }
    }
}

std::string textFor(const PropertyCollector& properties, std::string_view key) {
    const std::string* const text = properties.valueForKey(key).text();
    return text != nullptr ? *text : std::string();
}

/// XMP spells the bits of the flash code out.
void addFlash(PropertyCollector& exif, const std::vector<XmpProperty>& packet) {
    struct Bits {
        std::string_view name;
        unsigned int shift;
    };
    constexpr Bits kBits[] = {{"Flash/Fired", 0}, {"Flash/Return", 1}, {"Flash/Mode", 3},
        {"Flash/Function", 5}, {"Flash/RedEyeMode", 6}};
    std::optional<std::int64_t> code;
    for (const XmpProperty& property : packet) {
        const auto bits = std::ranges::find(kBits, property.name, &Bits::name);
        if (property.space == XmpNamespace::Exif && bits != std::end(kBits)) {
            const std::string& text = property.values.front();
            const bool isTrue = text == "True" || text == "true";
            code = code.value_or(0) | (isTrue ? 1 : integerFromText(text) & 3) << bits->shift;
        }
    }
    if (code) {
        exif.add(kCGImagePropertyExifFlash, *code);
    }
}

ExifProperties ExifReader::read(const std::vector<XmpProperty>& packet) {
    if (const auto block = TiffBlock::fromBytes(_facts.exif.bytes())) {
        readDirectories(*block);
    }
    readBlocksOfTheirOwn();
    addPacket(packet);
    addMakerNote();
    _read.aux.add(
        kCGImagePropertyExifAuxLensInfo, _read.exif.valueForKey(kCGImagePropertyExifLensSpecification));
    _read.aux.add(
        kCGImagePropertyExifAuxOwnerName, _read.exif.valueForKey(kCGImagePropertyExifCameraOwnerName));
    return std::move(_read);
}

void ExifReader::readDirectories(const TiffBlock& block) {
    const auto first = _facts.directory > 0 ? block.directoryAt(_facts.directory) : block.firstDirectory();
    if (const auto offset = first.numberFor(kExifPointer)) {
        readExifDirectory(block, block.directoryAt(*offset));
    }
    if (const auto offset = first.numberFor(kGpsPointer)) {
        readGpsDirectory(block.directoryAt(*offset));
    }
    readFirstDirectory(first);
}

void ExifReader::readFirstDirectory(const TiffDirectory& directory) {
    forEachEntry(directory, [this](const TiffEntry& entry) {
        if (entry.tag == kRating) {
            _read.rating = integerAt(entry, 0);
        } else if (_facts.isTiffFile) {
            _read.tiff.addEntry(entry);
            _read.exif.addEntry(entry); // Raw files keep shooting settings here too.
        } else if (std::ranges::count(kPixelTags, entry.tag) == 0) {
            _read.tiff.addEntry(entry);
        }
    });
}

void ExifReader::readExifDirectory(const TiffBlock& block, const TiffDirectory& directory) {
    forEachEntry(directory, [&](const TiffEntry& entry) {
        if (entry.tag == kMakerNote) {
            noteMakerNote(block, entry.bytes);
        } else if (entry.tag == kInteroperabilityPointer) {
            const auto offset = static_cast<std::uint32_t>(integerAt(entry, 0).value_or(0));
            const auto index = block.directoryAt(offset).find(kInteroperabilityIndex);
            _read.isAdobeRgbFile = index && textOf(*index) == "R03";
        } else {
            _read.exif.addEntry(entry);
        }
        if (isLensHint(entry.tag)) {
            _note.lensHints.push_back(entry);
        }
    });
}

void ExifReader::readGpsDirectory(const TiffDirectory& directory) {
    forEachEntry(directory, [this](const TiffEntry& entry) { _read.gps.addEntry(entry); });
}

void ExifReader::readBlocksOfTheirOwn() {
    if (const auto block = TiffBlock::fromBytes(_facts.exifDirectory.bytes())) {
        readExifDirectory(*block, block->firstDirectory());
    }
    if (const auto block = TiffBlock::fromBytes(_facts.gpsDirectory.bytes())) {
        readGpsDirectory(block->firstDirectory());
    }
    if (const auto block = TiffBlock::fromBytes(_facts.makerNote.bytes())) {
        const auto bytes = block->view().bytes();
        noteMakerNote(
            *block, bytes.subspan(std::min<std::size_t>(block->firstDirectoryOffset(), bytes.size())));
    }
}

void ExifReader::noteMakerNote(const TiffBlock& block, std::span<const std::uint8_t> note) {
    _note.block = block.view().bytes();
    _note.order = block.view().order();
    _note.offset = static_cast<std::size_t>(note.data() - _note.block.data());
    _note.length = note.size();
}

void ExifReader::addPacket(const std::vector<XmpProperty>& packet) {
    for (const XmpProperty& property : packet) {
        if (property.space == XmpNamespace::Exif) {
            _read.exif.addXmpProperty(property);
            _read.gps.addXmpProperty(property);
        } else if (property.space == XmpNamespace::Tiff) {
            _read.tiff.addXmpProperty(property);
        } else if (property.space == XmpNamespace::Aux) {
            _read.aux.addXmpProperty(property);
        }
    }
    addFlash(_read.exif, packet);
}

void ExifReader::addMakerNote() {
    if (_note.length == 0) {
        return;
    }
    if (auto apple = appleMakerNote(_note.block.subspan(_note.offset, _note.length))) {
        _read.makerDictionaries.emplace_back(kCGImagePropertyMakerAppleDictionary, std::move(apple));
        return;
    }
    if (!_readsAllMakerNotes) {
        return;
    }
    _note.make = textFor(_read.tiff, kCGImagePropertyTIFFMake);
    _note.model = textFor(_read.tiff, kCGImagePropertyTIFFModel);
    _read.makerDictionaries = readMakerNote(_note, _read.aux);
}

} // namespace

ExifProperties readExifProperties(const ImageFacts& facts, const std::vector<XmpProperty>& packet) {
    return ExifReader(facts, true).read(packet);
}

ExifProperties readExifPropertiesForLibrary(const ImageFacts& facts, const std::vector<XmpProperty>& packet) {
    return ExifReader(facts, false).read(packet);
}

} // namespace exifcard
