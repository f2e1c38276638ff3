#include "platform/imageio/pixels/JpegSegments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace exifcard {
namespace {

using ByteSpan = std::span<const std::uint8_t>;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kMarkerPrefix = 0xFF;
constexpr std::uint8_t kApp1 = 0xE1;
constexpr std::uint8_t kApp2 = 0xE2;
constexpr std::uint8_t kStartOfScan = 0xDA;
// Frames whose picture data comes in several scans: progressive, with Huffman and with arithmetic coding.
constexpr std::uint8_t kProgressiveFrames[] = {0xC2, 0xCA};

constexpr std::size_t kMarkerSize = 2;
constexpr std::size_t kLengthSize = 2;
constexpr std::size_t kMaximumContent = 0xFFFF - kLengthSize;

constexpr std::string_view kExifName("Exif\0\0", 6);
constexpr std::string_view kProfileName("ICC_PROFILE\0", 12);
constexpr std::size_t kProfileHeadSize =
    kProfileName.size() + 2; // The piece's number and how many there are.

struct Segment {
    std::uint8_t marker = 0;
    ByteSpan content;
};

/// Takes the next segment off the front; nothing at the end or where it is broken.
std::optional<Segment> takeSegment(ByteSpan& rest) {
    while (rest.size() > 1 && rest[0] == kMarkerPrefix && rest[1] == kMarkerPrefix) {
        rest = rest.subspan(1); // Padding.
    }
    if (rest.size() < kMarkerSize + kLengthSize || rest[0] != kMarkerPrefix) {
        return std::nullopt;
    }
    const std::uint8_t marker = rest[1];
    const std::size_t length = std::size_t(rest[2]) << 8U | rest[3];
    if (length < kLengthSize || length > rest.size() - kMarkerSize) {
        return std::nullopt;
    }
    const Segment segment = {marker, rest.subspan(kMarkerSize + kLengthSize, length - kLengthSize)};
    rest = rest.subspan(kMarkerSize + length);
    return segment;
}

bool startsWith(ByteSpan bytes, std::string_view name) {
    return bytes.size() >= name.size() &&
           std::ranges::equal(bytes.first(name.size()), name, {}, {},
               [](char character) { return static_cast<std::uint8_t>(character); });
}

/// Pieces of a profile by their number, which begins with 1.
using ProfilePieces = std::map<std::uint8_t, ByteSpan>;

Bytes joinedProfile(const ProfilePieces& pieces, std::size_t pieceCount) {
    Bytes profile;
    if (pieces.size() != pieceCount) {
        return profile;
    }
    for (const auto& [number, piece] : pieces) {
        profile.insert(profile.end(), piece.begin(), piece.end());
    }
    return profile;
}

void append(Bytes& bytes, std::uint8_t marker, std::string_view head, ByteSpan content) {
    const std::size_t length = kLengthSize + head.size() + content.size();
    bytes.insert(bytes.end(),
        {kMarkerPrefix, marker, static_cast<std::uint8_t>(length >> 8U), static_cast<std::uint8_t>(length)});
    bytes.insert(bytes.end(), head.begin(), head.end());
    bytes.insert(bytes.end(), content.begin(), content.end());
}

} // namespace

JpegHeader readJpegHeader(ByteSpan jpeg) {
    JpegHeader header;
    ProfilePieces pieces;
    std::size_t pieceCount = 0;
    ByteSpan rest = jpeg.subspan(std::min(kMarkerSize, jpeg.size()));
    for (auto segment = takeSegment(rest); segment && segment->marker != kStartOfScan;
         segment = takeSegment(rest)) {
        if (std::ranges::count(kProgressiveFrames, segment->marker) > 0) {
            header.isProgressive = true;
        }
        if (segment->marker == kApp2 && startsWith(segment->content, kProfileName) &&
            segment->content.size() >= kProfileHeadSize) {
            pieceCount = segment->content[kProfileHeadSize - 1];
            pieces.emplace(
                segment->content[kProfileHeadSize - 2], segment->content.subspan(kProfileHeadSize));
        }
    }
    header.iccProfile = joinedProfile(pieces, pieceCount);
    return header;
}

void insertJpegSegments(Bytes& jpeg, ByteSpan exif, ByteSpan iccProfile) {
    Bytes segments;
    if (!exif.empty() && exif.size() <= kMaximumContent - kExifName.size()) {
        append(segments, kApp1, kExifName, exif);
    }
    constexpr std::size_t kPieceSize = kMaximumContent - kProfileHeadSize;
    const std::size_t pieceCount = (iccProfile.size() + kPieceSize - 1) / kPieceSize;
    for (std::size_t piece = 0; piece < pieceCount && pieceCount <= 0xFF; ++piece) {
        std::string head(kProfileName);
        head += static_cast<char>(piece + 1);
        head += static_cast<char>(pieceCount);
        const ByteSpan from = iccProfile.subspan(piece * kPieceSize);
        append(segments, kApp2, head, from.first(std::min(kPieceSize, from.size())));
    }
    ByteSpan rest = ByteSpan(jpeg).subspan(std::min(kMarkerSize, jpeg.size()));
    takeSegment(rest);
    jpeg.insert(jpeg.end() - static_cast<std::ptrdiff_t>(rest.size()), segments.begin(), segments.end());
}

} // namespace exifcard
