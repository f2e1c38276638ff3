#include "platform/foundation/Array.h"
#include "platform/foundation/NumberText.h"
#include "platform/imageio/FilmSimulation.h"
#include "platform/imageio/ImageProperties.h"
#include "platform/imageio/MakerNote.h"
#include "platform/imageio/NotesModule.h"
#include "platform/imageio/PlainMakerNote.h"
#include "platform/imageio/TextEncoding.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

/// Cameras without a lens that tells its number write all ones.
constexpr std::int64_t kNoLens = 0xffff;
constexpr double kCanonStepsPerStop = 32;
constexpr double kPanasonicStepsPerStop = 3;

/// 0 beyond the last value, as Exiv2 has it for what is no number.
std::int64_t integerAt(const NoteTag& tag, std::size_t index) {
    return index < tag.integers.size() ? tag.integers[index] : 0;
}

double realAt(const NoteTag& tag, std::size_t index) {
    const auto [numerator, denominator] =
        index < tag.fractions.size() ? tag.fractions[index] : std::pair(0, 0);
    return denominator == 0 ? 0 : static_cast<double>(numerator) / denominator;
}

std::string textOf(const NoteTag& tag) {
    return utf8FromUnknown(withoutTrailingBlanks(textBeforeNul(tag.text)));
}

Value text(const NoteTag& tag) {
    auto read = textOf(tag);
    return read.empty() ? Value() : Value(std::move(read));
}

Value integer(const NoteTag& tag) {
    return tag.count > 0 ? Value(integerAt(tag, 0)) : Value();
}

Value integers(const NoteTag& tag) {
    auto list = Array::make();
    for (const std::int64_t number : tag.integers) {
        list->addObject(number);
    }
    return list->isEmpty() ? Value() : Value(list);
}

Value real(const NoteTag& tag) {
    return tag.count > 0 ? Value(realAt(tag, 0)) : Value();
}

/// The number of the body as decimal digits.
Value serialNumber(const NoteTag& tag) {
    return tag.isText ? text(tag) : Value(std::to_string(integerAt(tag, 0)));
}

/// "NO= 20025585" as "20025585".
Value nikonSerialNumber(const NoteTag& tag) {
    std::string number = textOf(tag);
    const auto begin = number.find_first_not_of(' ', number.starts_with("NO=") ? 3 : 0);
    return begin == std::string::npos ? Value() : Value(number.substr(begin));
}

/// Canon writes 0 for a lens that tells no number, too.
Value canonLensNumber(const NoteTag& tag) {
    const auto number = integerAt(tag, 0);
    return number == kNoLens || number == 0 ? Value() : Value(number);
}

Value lensNumber(const NoteTag& tag) {
    const auto number = integerAt(tag, 0);
    return number == kNoLens ? Value() : Value(number);
}

/// The name that Exiv2 knows for the number of the lens; nothing for a number it does not know.
Value lensName(const NoteTag& tag) {
    if (integerAt(tag, 0) == kNoLens) {
        return {};
    }
    const std::string& name = tag.inWords;
    const bool isName = !name.empty() && name.front() != '(' && (name.front() < '0' || name.front() > '9');
    return isName ? Value(utf8FromUnknown(name)) : Value();
}

/// The shortest and longest focal length and the widest apertures at both.
Value lensInfo(const NoteTag& tag) {
    if (tag.count != 4) {
        return {};
    }
    return Array::make({realAt(tag, 0), realAt(tag, 1), realAt(tag, 2), realAt(tag, 3)});
}

/// Canon keeps the longest focal length, the shortest one and their units per millimetre.
Value canonLensInfo(const NoteTag& tag) {
    const double unitsPerMillimetre = tag.count == 3 ? static_cast<double>(integerAt(tag, 2)) : 0;
    if (unitsPerMillimetre <= 0 || integerAt(tag, 0) == 0) {
        return {};
    }
    const auto longest = static_cast<double>(integerAt(tag, 0)) / unitsPerMillimetre;
    const auto shortest = static_cast<double>(integerAt(tag, 1)) / unitsPerMillimetre;
    return Array::make({shortest, longest, 0.0, 0.0});
}

/// "24.0-120.0 mm f/4.0", one number where both are equal.
Value nikonLensModel(const NoteTag& tag) {
    if (tag.count != 4 || realAt(tag, 0) <= 0) {
        return {};
    }
    const auto range = [&](std::size_t first) {
        const double low = realAt(tag, first);
        const double high = realAt(tag, first + 1);
        return low == high ? fmt::format("{:.1f}", low) : fmt::format("{:.1f}-{:.1f}", low, high);
    };
    return fmt::format("{} mm f/{}", range(0), range(2));
}

Value canonFlashCompensation(const NoteTag& tag) {
    return static_cast<double>(static_cast<std::int16_t>(integerAt(tag, 0))) / kCanonStepsPerStop;
}

/// Three signed bytes: steps, and the size of one as a fraction.
Value nikonFlashCompensation(const NoteTag& tag) {
    const auto byteAt = [&](std::size_t index) { return static_cast<std::int8_t>(integerAt(tag, index)); };
    return tag.count < 3 || byteAt(2) == 0 ? Value()
                                           : Value(static_cast<double>(byteAt(0)) * byteAt(1) / byteAt(2));
}

Value panasonicFlashCompensation(const NoteTag& tag) {
    return static_cast<double>(static_cast<std::int16_t>(integerAt(tag, 0))) / kPanasonicStepsPerStop;
}

/// 0x1001 as "1.001".
Value olympusFirmware(const NoteTag& tag) {
    const auto digits = fmt::format("{:04x}", integerAt(tag, 0));
    return digits.substr(0, digits.size() - 3) + "." + digits.substr(digits.size() - 3);
}

/// Pentax encrypts the count with the date; Exiv2 decrypts it into its text.
Value pentaxShutterCount(const NoteTag& tag) {
    const auto count = integerFromText(tag.inWords);
    return tag.count == 4 && count > 0 ? Value(count) : Value();
}

/// A look and, twice, its code.
Value filmSimulation(const NoteTag& tag) {
    const auto code = integerAt(tag, 0);
    return Array::make({fujiFilmModeName(code), code, code});
}

Value filmSaturation(const NoteTag& tag) {
    const auto code = integerAt(tag, 0);
    return Array::make({fujiSaturationName(code), code, code});
}

/// Where a tag of a note goes.
struct NoteRow {
    std::string_view group; ///< As Exiv2 calls the part of the note.
    std::uint16_t tag;
    std::string_view dictionary;
    std::string_view key;
    Value (*read)(const NoteTag& tag);
};

constexpr auto kAux = kCGImagePropertyExifAuxDictionary;
constexpr auto kCanon = kCGImagePropertyMakerCanonDictionary;
constexpr auto kNikon = kCGImagePropertyMakerNikonDictionary;

/// Of two rows with the same key the upper one holds.
constexpr NoteRow kRows[] = {
    {"Canon", 0x0007, kAux, kCGImagePropertyExifAuxFirmware, text},
    {"Canon", 0x0008, kAux, kCGImagePropertyExifAuxImageNumber, integer},
    {"Canon", 0x0009, kAux, kCGImagePropertyExifAuxOwnerName, text},
    {"Canon", 0x000c, kAux, kCGImagePropertyExifAuxSerialNumber, serialNumber},
    {"Canon", 0x0095, kAux, kCGImagePropertyExifAuxLensModel, text},
    {"CanonCs", 0x0016, kAux, kCGImagePropertyExifAuxLensID, canonLensNumber},
    {"CanonCs", 0x0017, kAux, kCGImagePropertyExifAuxLensInfo, canonLensInfo},
    {"CanonSi", 0x000f, kAux, kCGImagePropertyExifAuxFlashCompensation, canonFlashCompensation},
    {"Canon", 0x0007, kCanon, "Firmware", text},
    {"Canon", 0x0008, kCanon, "ImageSerialNumber", integer},
    {"Canon", 0x0009, kCanon, "OwnerName", text},
    {"Canon", 0x000c, kCanon, "CameraSerialNumber", serialNumber},
    {"Canon", 0x0095, kCanon, "LensModel", text},
    {"Canon", 0x009a, kCanon, "AspectRatioInfo", integers},
    {"CanonCs", 0x0005, kCanon, "ContinuousDrive", integer},
    {"CanonSi", 0x000f, kCanon, "FlashExposureComp", canonFlashCompensation},
    {"Nikon3", 0x0012, kAux, kCGImagePropertyExifAuxFlashCompensation, nikonFlashCompensation},
    {"Nikon3", 0x001d, kAux, kCGImagePropertyExifAuxSerialNumber, nikonSerialNumber},
    {"Nikon3", 0x00a0, kAux, kCGImagePropertyExifAuxSerialNumber, nikonSerialNumber},
    {"Nikon3", 0x0084, kAux, kCGImagePropertyExifAuxLensModel, nikonLensModel},
    {"Nikon3", 0x0084, kAux, kCGImagePropertyExifAuxLensInfo, lensInfo},
    {"Nikon3", 0x00a7, kAux, kCGImagePropertyExifAuxImageNumber, integer},
    {"NikonLd3", 0x000c, kAux, kCGImagePropertyExifAuxLensID, integer},
    {"NikonLd2", 0x000b, kAux, kCGImagePropertyExifAuxLensID, integer},
    {"NikonLd1", 0x0006, kAux, kCGImagePropertyExifAuxLensID, integer},
    {"Nikon3", 0x0002, kNikon, "ISOSetting", integers},
    {"Nikon3", 0x0003, kNikon, "ColorMode", text},
    {"Nikon3", 0x0004, kNikon, "Quality", text},
    {"Nikon3", 0x0005, kNikon, "WhiteBalanceMode", text},
    {"Nikon3", 0x0006, kNikon, "SharpenMode", text},
    {"Nikon3", 0x0007, kNikon, "FocusMode", text},
    {"Nikon3", 0x0008, kNikon, "FlashSetting", text},
    {"Nikon3", 0x000f, kNikon, "ISOSelection", text},
    {"Nikon3", 0x0012, kNikon, "FlashExposureComp", nikonFlashCompensation},
    {"Nikon3", 0x0080, kNikon, "ImageAdjustment", text},
    {"Nikon3", 0x0082, kNikon, "LensAdapter", text},
    {"Nikon3", 0x0083, kNikon, "LensType", integer},
    {"Nikon3", 0x0084, kNikon, "LensInfo", lensInfo},
    {"Nikon3", 0x0085, kNikon, "FocusDistance", real},
    {"Nikon3", 0x0086, kNikon, "DigitalZoom", real},
    {"Nikon3", 0x0089, kNikon, "ShootingMode", integer},
    {"Nikon3", 0x001d, kNikon, "CameraSerialNumber", nikonSerialNumber},
    {"Nikon3", 0x00a0, kNikon, "CameraSerialNumber", nikonSerialNumber},
    {"Nikon3", 0x00a7, kNikon, "ShutterCount", integer},
    {"OlympusEq", 0x0101, kAux, kCGImagePropertyExifAuxSerialNumber, text},
    {"OlympusEq", 0x0104, kAux, kCGImagePropertyExifAuxFirmware, olympusFirmware},
    {"OlympusEq", 0x0202, kAux, kCGImagePropertyExifAuxLensSerialNumber, text},
    {"OlympusEq", 0x0203, kAux, kCGImagePropertyExifAuxLensModel, text},
    {"Olympus", 0x1023, kAux, kCGImagePropertyExifAuxFlashCompensation, real},
    {"Olympus2", 0x1023, kAux, kCGImagePropertyExifAuxFlashCompensation, real},
    {"Fujifilm", 0x0010, kAux, kCGImagePropertyExifAuxSerialNumber, text},
    {"Fujifilm", 0x1401, kPictureStyleDictionary, kPictureStyleFilmSimulation, filmSimulation},
    {"Fujifilm", 0x1003, kPictureStyleDictionary, kPictureStyleSaturation, filmSaturation},
    {"Panasonic", 0x0024, kAux, kCGImagePropertyExifAuxFlashCompensation, panasonicFlashCompensation},
    {"Panasonic", 0x0025, kAux, kCGImagePropertyExifAuxSerialNumber, text},
    {"Panasonic", 0x0051, kAux, kCGImagePropertyExifAuxLensModel, text},
    {"Panasonic", 0x0052, kAux, kCGImagePropertyExifAuxLensSerialNumber, text},
    {"Pentax", 0x003f, kAux, kCGImagePropertyExifAuxLensModel, lensName},
    {"Pentax", 0x005d, kAux, kCGImagePropertyExifAuxImageNumber, pentaxShutterCount},
    {"Pentax", 0x0229, kAux, kCGImagePropertyExifAuxSerialNumber, text},
    {"PentaxDng", 0x003f, kAux, kCGImagePropertyExifAuxLensModel, lensName},
    {"PentaxDng", 0x0229, kAux, kCGImagePropertyExifAuxSerialNumber, text},
    {"Sony1", 0xb027, kAux, kCGImagePropertyExifAuxLensModel, lensName},
    {"Sony1", 0xb027, kAux, kCGImagePropertyExifAuxLensID, lensNumber},
    {"Sony2", 0xb027, kAux, kCGImagePropertyExifAuxLensModel, lensName},
    {"Sony2", 0xb027, kAux, kCGImagePropertyExifAuxLensID, lensNumber},
    {"Minolta", 0x010c, kAux, kCGImagePropertyExifAuxLensID, lensNumber},
    {"Sigma", 0x0002, kAux, kCGImagePropertyExifAuxSerialNumber, text},
    {"Sigma", 0x0017, kAux, kCGImagePropertyExifAuxFirmware, text},
};

constexpr std::array<WantedTag, std::size(kRows)> wantedTags() {
    std::array<WantedTag, std::size(kRows)> wanted;
    std::ranges::transform(kRows, wanted.begin(), [](const NoteRow& row) {
        const bool isWantedInWords = row.read == lensName || row.read == pentaxShutterCount;
        return WantedTag{row.group, row.tag, isWantedInWords};
    });
    return wanted;
}

constexpr auto kWantedTags = wantedTags();

/// The values of all rows, in their order.
using RowValues = std::array<Value, std::size(kRows)>;

RowValues valuesOf(const std::vector<NoteTag>& tags) {
    RowValues values;
    for (const NoteTag& tag : tags) {
        for (std::size_t row = 0; row < std::size(kRows); ++row) {
            if (kRows[row].tag == tag.tag && kRows[row].group == tag.group && values[row].isNothing()) {
                values[row] = kRows[row].read(tag);
            }
        }
    }
    return values;
}

/// The dictionary of that name in the list, added when it is missing.
Dictionary& dictionaryNamed(std::string_view name, std::vector<NamedDictionary>& dictionaries) {
    for (const auto& [known, dictionary] : dictionaries) {
        if (known == name) {
            return *dictionary;
        }
    }
    return *dictionaries.emplace_back(name, Dictionary::make()).second;
}

/// Adds the rows' values to `aux` and to dictionaries of their own.
std::vector<NamedDictionary> propertiesFromTags(const std::vector<NoteTag>& tags, PropertyCollector& aux) {
    std::vector<NamedDictionary> dictionaries;
    RowValues values = valuesOf(tags);
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        if (values[row].isNothing()) {
            continue;
        }
        if (kRows[row].dictionary == kAux) {
            aux.add(kRows[row].key, std::move(values[row]));
            continue;
        }
        auto& dictionary = dictionaryNamed(kRows[row].dictionary, dictionaries);
        if (!dictionary.containsKey(kRows[row].key)) {
            dictionary.setObjectForKey(std::move(values[row]), kRows[row].key);
        }
    }
    return dictionaries;
}

} // namespace

std::vector<NamedDictionary> readMakerNote(const MakerNote& note, PropertyCollector& aux) {
    if (const auto tags = tagsOfPlainMakerNote(note, kWantedTags)) {
        return propertiesFromTags(*tags, aux);
    }
    const auto structure = structureForMakerNote(note);
    if (structure.empty() || noteDecoder() == nullptr) {
        return {};
    }
    return propertiesFromTags(noteDecoder()->tagsOfMakerNote(structure, kWantedTags, logNoteFault), aux);
}

} // namespace exifcard
