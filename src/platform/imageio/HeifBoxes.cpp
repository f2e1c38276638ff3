#include "platform/imageio/HeifBoxes.h"

#include "platform/imageio/HeifMeta.h"
#include "platform/imageio/IsoBoxes.h"

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <string_view>

namespace exifcard {
namespace {

constexpr std::size_t kUuidSize = 16;
constexpr std::string_view kCanonUuid = "\x85\xc0\xb6\x87\x82\x0f\x11\xe0\x81\x11\xf4\xce\x46\x2b\x6a\x48";
constexpr std::string_view kXmpUuid = "\xbe\x7a\xcf\xcb\x97\xa9\x42\xe8\x9c\x71\x99\x94\x91\xe3\xaf\xac";
constexpr BoxType kCmtBoxes[] = {boxType("CMT1"), boxType("CMT2"), boxType("CMT3"), boxType("CMT4")};

// What these name is data about a picture, or the recipe of another view of the primary one.
constexpr BoxType kItemsWithoutPicture[] = {
    boxType("Exif"), boxType("mime"), boxType("uri "), boxType("tmap")};

constexpr std::string_view kAlphaTypes[] = {
    "urn:mpeg:mpegB:cicp:systems:auxiliary:alpha",
    "urn:mpeg:hevc:2015:auxid:1",
};

// By EXIF code, the code after one more step. Index 0 is unused.
constexpr int kAfterQuarterTurnLeft[] = {0, 8, 5, 6, 7, 4, 1, 2, 3};
constexpr int kAfterMirrorLeftRight[] = {0, 2, 1, 4, 3, 6, 5, 8, 7};

std::string_view textOf(ByteSpan bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Data sliceOf(const Data& file, ByteSpan part) {
    return part.empty() ? Data()
                        : file.slice(static_cast<std::size_t>(part.data() - file.data()), part.size());
}

/// The part after a "uuid" box's name, when it has that name.
std::optional<ByteSpan> uuidContent(const Box& box, std::string_view uuid) {
    if (box.type != boxType("uuid") || !textOf(box.payload).starts_with(uuid)) {
        return std::nullopt;
    }
    return box.payload.subspan(kUuidSize);
}

int dimension(std::uint64_t value) {
    return value <= std::uint64_t(std::numeric_limits<int>::max()) ? static_cast<int>(value) : 0;
}

int orientationAfter(int orientation, const Box& transformation) {
    ByteCursor cursor(transformation.payload);
    const auto code = cursor.number(1);
    int after = std::max(orientation, 1);
    if (transformation.type == boxType("irot")) {
        for (std::uint64_t turn = 0; turn < (code & 3U); ++turn) {
            after = kAfterQuarterTurnLeft[after];
        }
        return after;
    }
    after = kAfterMirrorLeftRight[after];
    const bool swapsTopAndBottom = (code & 1U) == 0;
    return swapsTopAndBottom ? kAfterQuarterTurnLeft[kAfterQuarterTurnLeft[after]] : after;
}

/// Takes what is not known yet.
void readColor(const Box& box, const Data& file, HeifContents& contents) {
    ByteCursor cursor(box.payload);
    const auto kind = static_cast<BoxType>(cursor.number(4));
    if (contents.iccProfile.empty() && (kind == boxType("prof") || kind == boxType("rICC"))) {
        contents.iccProfile = sliceOf(file, cursor.rest());
    }
    if (!contents.color && kind == boxType("nclx")) {
        HeifColor color;
        color.primaries = static_cast<int>(cursor.number(2));
        color.transfer = static_cast<int>(cursor.number(2));
        color.matrix = static_cast<int>(cursor.number(2));
        color.isFullRange = (cursor.number(1) & 0x80U) != 0;
        contents.color = cursor.isBroken() ? std::nullopt : std::optional(color);
    }
}

int depthFromAv1Configuration(ByteCursor cursor) {
    cursor.skip(2);
    const auto flags = cursor.number(1);
    const bool isHigh = (flags & 0x40U) != 0;
    const bool isTwelve = (flags & 0x20U) != 0;
    const int highDepth = isTwelve ? 12 : 10;
    return isHigh ? highDepth : 8;
}

/// Bits per component, from the list of channels or else from the decoder's configuration; 0 without either.
int bitDepth(const std::vector<Box>& properties) {
    int depth = 0;
    for (const Box& box : properties) {
        ByteCursor cursor(box.payload);
        if (box.type == boxType("pixi")) {
            cursor.skip(5); // Version, flags and the number of channels.
            return static_cast<int>(cursor.number(1));
        }
        if (box.type == boxType("hvcC")) {
            cursor.skip(17);
            depth = 8 + static_cast<int>(cursor.number(1) & 7U);
        } else if (box.type == boxType("av1C")) {
            depth = depthFromAv1Configuration(cursor);
        }
    }
    return depth;
}

void readColorAndDepth(const std::vector<Box>& properties, const Data& file, HeifContents& contents) {
    for (const Box& box : properties) {
        if (box.type == boxType("colr")) {
            readColor(box, file, contents);
        }
    }
    if (contents.bitsPerComponent == 0) {
        contents.bitsPerComponent = bitDepth(properties);
    }
}

void readSizeAndOrientation(const std::vector<Box>& properties, HeifContents& contents) {
    for (const Box& box : properties) {
        if (box.type == boxType("ispe")) {
            ByteCursor cursor(box.payload);
            cursor.skip(4); // Version and flags.
            contents.width = dimension(cursor.number(4));
            contents.height = dimension(cursor.number(4));
        } else if (box.type == boxType("irot") || box.type == boxType("imir")) {
            contents.exifOrientation = orientationAfter(contents.exifOrientation, box);
        }
    }
}

void readProperties(const HeifMeta& meta, const Data& file, HeifContents& contents) {
    const std::vector<Box> properties = meta.properties(meta.primary().id);
    readSizeAndOrientation(properties, contents);
    readColorAndDepth(properties, file, contents);
    // A picture made of tiles may leave these to the tiles, as phones do.
    const auto tile = std::ranges::find_if(meta.references(), [&](const HeifReference& reference) {
        return reference.type == boxType("dimg") && reference.from == meta.primary().id;
    });
    if (tile != meta.references().end()) {
        readColorAndDepth(meta.properties(tile->to), file, contents);
    }
}

bool isAlpha(const std::vector<Box>& properties) {
    return std::ranges::any_of(properties, [](const Box& box) {
        ByteCursor cursor(box.payload);
        cursor.skip(4); // Version and flags.
        return box.type == boxType("auxC") && std::ranges::count(kAlphaTypes, cursor.text()) > 0;
    });
}

bool hasAlpha(const HeifMeta& meta) {
    return std::ranges::any_of(meta.references(), [&](const HeifReference& reference) {
        return reference.type == boxType("auxl") && reference.to == meta.primary().id &&
               isAlpha(meta.properties(reference.from));
    });
}

std::size_t imageCount(const HeifMeta& meta) {
    std::vector<std::uint32_t> subordinates;
    for (const HeifReference& reference : meta.references()) {
        if (reference.type == boxType("thmb") || reference.type == boxType("auxl")) {
            subordinates.push_back(reference.from);
        } else if (reference.type == boxType("dimg")) {
            subordinates.push_back(reference.to);
        }
    }
    std::ranges::sort(subordinates);
    const auto isTopLevel = [&](const HeifItem& item) {
        return item.id == meta.primary().id ||
               (!item.isHidden && std::ranges::count(kItemsWithoutPicture, item.type) == 0 &&
                   !std::ranges::binary_search(subordinates, item.id));
    };
    return static_cast<std::size_t>(std::ranges::count_if(meta.items(), isTopLevel));
}

bool isExif(const HeifItem& item) {
    return item.type == boxType("Exif");
}

bool isXmp(const HeifItem& item) {
    return item.type == boxType("mime") && item.contentType == "application/rdf+xml";
}

/// The bytes of the item that describes the primary picture; where none does, of the first that describes
/// no other picture either.
Data description(const HeifMeta& meta, const Data& file, bool (*isWanted)(const HeifItem&)) {
    std::vector<std::uint32_t> describing;
    for (const HeifReference& reference : meta.references()) {
        if (reference.type != boxType("cdsc")) {
            continue;
        }
        const HeifItem* const item = meta.item(reference.from);
        if (reference.to == meta.primary().id && item != nullptr && isWanted(*item)) {
            return meta.content(item->id, file);
        }
        describing.push_back(reference.from);
    }
    std::ranges::sort(describing);
    const auto found = std::ranges::find_if(meta.items(), [&](const HeifItem& item) {
        return isWanted(item) && !std::ranges::binary_search(describing, item.id);
    });
    return found == meta.items().end() ? Data() : meta.content(found->id, file);
}

/// The TIFF within an Exif item, which begins with the number of bytes to skip after that number.
Data tiffInExifItem(const Data& item) {
    constexpr std::size_t kPrefixSize = 4;
    constexpr std::string_view kJpegMarker("Exif\0\0", 6);
    ByteCursor cursor(item.bytes());
    const std::size_t skipped = cursor.number(kPrefixSize);
    const Data tiff = item.slice(kPrefixSize + skipped, item.size());
    return tiff.text().starts_with(kJpegMarker) ? tiff.slice(kJpegMarker.size(), tiff.size()) : tiff;
}

bool readMeta(const Box& box, const Data& file, HeifContents& contents) {
    const auto meta = HeifMeta::read(box.payload);
    if (!meta) {
        return false;
    }
    contents.imageCount = imageCount(*meta);
    contents.hasAlpha = hasAlpha(*meta);
    readProperties(*meta, file, contents);
    contents.exif = tiffInExifItem(description(*meta, file, isExif));
    contents.xmp = description(*meta, file, isXmp);
    return true;
}

/// The payload at the end of a path of nested boxes.
std::optional<ByteSpan> nestedBox(ByteSpan boxes, std::initializer_list<BoxType> path) {
    for (const BoxType type : path) {
        const auto box = firstBox(boxes, type);
        if (!box) {
            return std::nullopt;
        }
        boxes = box->payload;
    }
    return boxes;
}

/// What describes the pictures of a CR3's track.
std::optional<Box> trackPicture(const Box& track) {
    constexpr std::size_t kListHeadSize = 8; // Version, flags and count.
    const auto samples =
        nestedBox(track.payload, {boxType("mdia"), boxType("minf"), boxType("stbl"), boxType("stsd")});
    return samples && samples->size() >= kListHeadSize
               ? firstBox(samples->subspan(kListHeadSize), boxType("CRAW"))
               : std::nullopt;
}

void readTrackSize(const Box& picture, HeifContents& contents) {
    constexpr std::size_t kSizeOffset = 24;
    ByteCursor cursor(picture.payload);
    cursor.skip(kSizeOffset);
    contents.width = dimension(cursor.number(2));
    contents.height = dimension(cursor.number(2));
}

/// Only a track of the sensor's own values has the box that tells how many bits one has.
void readTrackDepth(const Box& picture, HeifContents& contents) {
    constexpr std::size_t kBoxesOffset = 82;
    constexpr std::size_t kBitsOffset = 24;
    constexpr int kMostBits = 16;
    const auto header = picture.payload.size() > kBoxesOffset
                            ? firstBox(picture.payload.subspan(kBoxesOffset), boxType("CMP1"))
                            : std::nullopt;
    if (header && header->payload.size() > kBitsOffset && header->payload[kBitsOffset] <= kMostBits) {
        contents.bitsPerComponent = header->payload[kBitsOffset];
    }
}

void readTrack(const Box& track, HeifContents& contents) {
    const auto picture = trackPicture(track);
    if (!picture) {
        return;
    }
    if (contents.width == 0) {
        // The first track is the camera's own full-size JPEG; that of the sensor has a masked border.
        readTrackSize(*picture, contents);
    }
    readTrackDepth(*picture, contents);
}

bool readMovie(const Box& movie, const Data& file, HeifContents& contents) {
    BoxWalk walk(movie.payload);
    while (const auto box = walk.next()) {
        if (box->type == boxType("trak")) {
            readTrack(*box, contents);
        }
        const auto canon = uuidContent(*box, kCanonUuid);
        for (std::size_t index = 0; canon && index < contents.cmtBlocks.size(); ++index) {
            const auto block = firstBox(*canon, kCmtBoxes[index]);
            contents.cmtBlocks[index] = block ? sliceOf(file, block->payload) : Data();
        }
    }
    contents.imageCount = 1;
    return !walk.isBroken();
}

} // namespace

std::optional<HeifContents> readHeifBoxes(const Data& file) {
    BoxWalk walk(file.bytes());
    const auto fileType = walk.next();
    if (!fileType || fileType->type != boxType("ftyp") || fileType->payload.size() < 4) {
        return std::nullopt;
    }
    HeifContents contents;
    contents.majorBrand = textOf(fileType->payload.first(4));
    contents.isCr3 = contents.majorBrand == "crx ";
    bool isWhole = false;
    // A box that the file's end cuts short ends the walk; what came before it counts.
    while (const auto box = walk.next()) {
        if (box->type == boxType("meta") && !contents.isCr3) {
            isWhole = readMeta(*box, file, contents);
            break;
        }
        if (box->type == boxType("moov") && contents.isCr3) {
            isWhole = readMovie(*box, file, contents);
        }
        if (const auto xmp = uuidContent(*box, kXmpUuid); xmp && contents.isCr3) {
            contents.xmp = sliceOf(file, *xmp);
        }
    }
    return isWhole ? std::optional(std::move(contents)) : std::nullopt;
}

} // namespace exifcard
