#include "platform/photos/import/EmbeddedVideo.h"

#include "platform/imageio/ByteView.h"
#include "platform/imageio/XmpPacket.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

/// A file holds a picture, a gain map, a depth map and a video or two.
constexpr std::size_t kMostParts = 16;

constexpr std::string_view kTrailerSignature = "SEFH";
constexpr std::string_view kTrailerEnd = "SEFT";
constexpr std::size_t kTrailerEndSize = 8; // The length of what stands before, and the signature.
constexpr std::size_t kTrailerHeaderSize = 12;
constexpr std::size_t kTrailerEntrySize = 12;
constexpr std::uint16_t kTrailerVideo = 0x0a30;
constexpr std::size_t kTrailerBlockHeaderSize = 8;

/// 0 for what is no number of bytes.
std::size_t sizeFromText(const std::string* text) {
    std::size_t size = 0;
    if (text != nullptr) {
        std::from_chars(text->data(), text->data() + text->size(), size);
    }
    return size;
}

/// The video that begins at `offset`, where one does.
std::optional<EmbeddedVideo> videoAt(const Data& file, std::size_t offset, std::size_t length) {
    constexpr std::size_t kSizeOfBoxSize = 4;
    if (offset == 0 || offset >= file.size() || length > file.size() - offset ||
        file.slice(offset + kSizeOfBoxSize, 4).text() != "ftyp") {
        return std::nullopt;
    }
    return EmbeddedVideo{static_cast<std::int64_t>(offset), static_cast<std::int64_t>(length)};
}

std::optional<EmbeddedVideo> videoBeforeEnd(const Data& file, std::size_t distance, std::size_t length) {
    return distance > 0 && distance < file.size() ? videoAt(file, file.size() - distance, length)
                                                  : std::nullopt;
}

/// The parts stand one after the other up to the file's end, the first of them without a length.
std::optional<EmbeddedVideo> videoOfDirectory(const Data& file, const std::vector<XmpProperty>& packet) {
    std::size_t distance = 0;
    for (std::size_t part = kMostParts; part > 0; --part) {
        const std::string path = "Directory[" + std::to_string(part) + "]/Item/";
        const auto member = [&](std::string_view name) {
            return firstXmpValue(packet, XmpNamespace::GoogleContainer, path + std::string(name));
        };
        const std::size_t length = sizeFromText(member("Length"));
        for (const std::size_t size : {sizeFromText(member("Padding")), length}) { // The padding comes last.
            if (size > file.size() - distance) {
                return std::nullopt;
            }
            distance += size;
        }
        const std::string* const meaning = member("Semantic");
        if (meaning != nullptr && *meaning == "MotionPhoto") {
            return videoBeforeEnd(file, distance, length);
        }
    }
    return std::nullopt;
}

std::optional<EmbeddedVideo> videoOfOffset(const Data& file, const std::vector<XmpProperty>& packet) {
    const std::size_t distance =
        sizeFromText(firstXmpValue(packet, XmpNamespace::GoogleCamera, "MicroVideoOffset"));
    return videoBeforeEnd(file, distance, distance);
}

/// One entry of the trailer's directory, whose blocks stand before the directory.
std::optional<EmbeddedVideo> videoOfEntry(const Data& file, std::size_t directory, const ByteView& entry) {
    const std::size_t distance = entry.longAt(4).value_or(0);
    const std::size_t length = entry.longAt(8).value_or(0);
    if (entry.shortAt(2) != kTrailerVideo || distance > directory || length > distance) {
        return std::nullopt;
    }
    const std::size_t block = directory - distance;
    const std::size_t name =
        ByteView(file.slice(block, length).bytes(), ByteOrder::Little).longAt(4).value_or(0);
    const std::size_t header = kTrailerBlockHeaderSize + std::min<std::size_t>(name, length);
    return header < length ? videoAt(file, block + header, length - header) : std::nullopt;
}

std::optional<EmbeddedVideo> videoOfTrailer(const Data& file) {
    const std::size_t size = file.size();
    if (size < kTrailerEndSize || file.slice(size - kTrailerEnd.size(), size).text() != kTrailerEnd) {
        return std::nullopt;
    }
    const ByteView end(file.slice(size - kTrailerEndSize, kTrailerEndSize).bytes(), ByteOrder::Little);
    const std::size_t length = end.longAt(0).value_or(0);
    if (length < kTrailerHeaderSize || length > size - kTrailerEndSize) {
        return std::nullopt;
    }
    const std::size_t directory = size - kTrailerEndSize - length;
    const Data entries = file.slice(directory, length);
    if (!entries.text().starts_with(kTrailerSignature)) {
        return std::nullopt;
    }
    for (std::size_t position = kTrailerHeaderSize; position + kTrailerEntrySize <= length;
         position += kTrailerEntrySize) {
        const Data entry = entries.slice(position, kTrailerEntrySize);
        if (auto video = videoOfEntry(file, directory, ByteView(entry.bytes(), ByteOrder::Little))) {
            return video;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<EmbeddedVideo> embeddedVideo(const Data& file, const std::vector<XmpProperty>& packet) {
    for (const auto read : {videoOfDirectory, videoOfOffset}) {
        if (auto video = read(file, packet)) {
            return video;
        }
    }
    return videoOfTrailer(file);
}

} // namespace exifcard
