#include "platform/photos/AssetRow.h"

#include <fmt/format.h>
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <array>
#include <cmath>
#include <random>

namespace exifcard {
namespace {

/// Longer than any identifier; what is longer only a damaged catalogue holds.
constexpr std::size_t kLongestIdentifier = 64;
/// More than any picture has; keeps products of two sides within 64 bits.
constexpr std::int64_t kLongestSideInPixels = std::int64_t(1) << 31U;
/// The years 1 and 9999, beyond which no date is shown.
constexpr double kEarliestMoment = -62'135'596'800;
constexpr double kLatestMoment = 253'402'300'799;

/// The columns in their order.
enum Column {
    kUUID,
    kMediaType,
    kSubtypes,
    kPlayback,
    kSourceType,
    kWidth,
    kHeight,
    kCreated,
    kModified,
    kDuration,
    kLocated,
    kLatitude,
    kLongitude,
    kAltitude,
    kHorizontalAccuracy,
    kVerticalAccuracy,
    kCourse,
    kSpeed,
    kLocatedAt,
    kFavorite,
    kHidden,
    kBurst,
    kRepresentsBurst,
    kBurstSelection,
    kEnd
};
static_assert(kEnd == kAssetColumnCount);

std::optional<Date> dateOf(const SQLiteStatement& row, int column) {
    const double moment = row.real(column);
    const bool isPossible = moment >= kEarliestMoment && moment <= kLatestMoment;
    return row.isNull(column) || !isPossible ? std::nullopt : std::optional(Date{moment});
}

double numberOf(const SQLiteStatement& row, int column) {
    const double number = row.real(column);
    return std::isfinite(number) ? number : 0;
}

std::int64_t sideOf(const SQLiteStatement& row, int column) {
    const std::int64_t side = row.integer(column);
    return side >= 0 && side <= kLongestSideInPixels ? side : 0;
}

template<class Enumeration>
Enumeration enumeratorOf(const SQLiteStatement& row, int column, Enumeration last) {
    const std::int64_t number = row.integer(column);
    const bool isKnown = number >= 0 && number <= static_cast<std::int64_t>(last);
    return static_cast<Enumeration>(isKnown ? number : 0);
}

std::optional<CLLocation> locationOf(const SQLiteStatement& row) {
    const CLLocationCoordinate2D coordinate{row.real(kLatitude), row.real(kLongitude)};
    const bool hasPlace = row.integer(kLocated) != 0 && !row.isNull(kLatitude) && !row.isNull(kLongitude);
    if (!hasPlace || !CLLocationCoordinate2DIsValid(coordinate)) {
        return std::nullopt;
    }
    return CLLocation{
        .coordinate = coordinate,
        .altitude = numberOf(row, kAltitude),
        .horizontalAccuracy = numberOf(row, kHorizontalAccuracy),
        .verticalAccuracy = numberOf(row, kVerticalAccuracy),
        .course = numberOf(row, kCourse),
        .speed = numberOf(row, kSpeed),
        .timestamp = dateOf(row, kLocatedAt),
    };
}

Value valueOf(const std::optional<Date>& date) {
    return date ? Value(*date) : Value();
}

std::string textOfUUID(const std::array<std::uint8_t, 16>& bytes) {
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const bool isGroupStart = index == 4 || index == 6 || index == 8 || index == 10;
        text += fmt::format("{}{:02X}", isGroupStart ? "-" : "", bytes.at(index));
    }
    return text;
}

/// Marks 128 bits as a UUID of that version.
std::string uuidOfBits(std::uint64_t high, std::uint64_t low, unsigned version) {
    std::array<std::uint8_t, 16> bytes{};
    for (unsigned index = 0; index < 8; ++index) {
        bytes.at(index) = static_cast<std::uint8_t>(high >> (56 - 8 * index));
        bytes.at(index + 8) = static_cast<std::uint8_t>(low >> (56 - 8 * index));
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0fU) | version << 4U);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3fU) | 0x80U);
    return textOfUUID(bytes);
}

} // namespace

std::string uuidOfIdentifier(std::string_view localIdentifier) {
    return std::string(localIdentifier.substr(0, localIdentifier.find('/')));
}

std::string makeUUID() {
    constexpr unsigned kRandom = 4;
    std::random_device random;
    const auto bits = [&random] { return std::uint64_t(random()) << 32U | random(); };
    const std::uint64_t high = bits();
    return uuidOfBits(high, bits(), kRandom);
}

std::string uuidFromBytes(std::string_view bytes) {
    constexpr unsigned kOwnRule = 8;
    const XXH128_hash_t hash = XXH3_128bits(bytes.data(), bytes.size());
    return uuidOfBits(hash.high64, hash.low64, kOwnRule);
}

PHAsset assetFromRow(const SQLiteStatement& row) {
    PHAsset asset;
    asset.localIdentifier = row.text(kUUID).value_or("").substr(0, kLongestIdentifier);
    asset.localIdentifier += kAssetIdentifierSuffix;
    asset.mediaType = enumeratorOf(row, kMediaType, PHAssetMediaType::Audio);
    asset.mediaSubtypes = static_cast<std::uint64_t>(row.integer(kSubtypes));
    asset.playbackStyle = enumeratorOf(row, kPlayback, PHAssetPlaybackStyle::VideoLooping);
    asset.sourceType = static_cast<std::uint64_t>(row.integer(kSourceType));
    asset.pixelWidth = sideOf(row, kWidth);
    asset.pixelHeight = sideOf(row, kHeight);
    asset.creationDate = dateOf(row, kCreated);
    asset.modificationDate = dateOf(row, kModified);
    asset.location = locationOf(row);
    asset.duration = std::max(0.0, numberOf(row, kDuration));
    asset.isFavorite = row.integer(kFavorite) != 0;
    asset.isHidden = row.integer(kHidden) != 0;
    asset.burstIdentifier = row.text(kBurst);
    asset.representsBurst = row.integer(kRepresentsBurst) != 0;
    asset.burstSelectionTypes = static_cast<std::uint64_t>(row.integer(kBurstSelection));
    return asset;
}

std::vector<Value> valuesOfAsset(const PHAsset& asset) {
    const CLLocation place = asset.location.value_or(CLLocation{});
    const auto placed = [&asset](double value) { return asset.location ? Value(value) : Value(); };
    return {
        uuidOfIdentifier(asset.localIdentifier),
        static_cast<std::int64_t>(asset.mediaType),
        static_cast<std::int64_t>(asset.mediaSubtypes),
        static_cast<std::int64_t>(asset.playbackStyle),
        static_cast<std::int64_t>(asset.sourceType),
        asset.pixelWidth,
        asset.pixelHeight,
        valueOf(asset.creationDate),
        valueOf(asset.modificationDate),
        asset.duration,
        asset.location.has_value(),
        placed(place.coordinate.latitude),
        placed(place.coordinate.longitude),
        placed(place.altitude),
        placed(place.horizontalAccuracy),
        placed(place.verticalAccuracy),
        placed(place.course),
        placed(place.speed),
        valueOf(place.timestamp),
        asset.isFavorite,
        asset.isHidden,
        asset.burstIdentifier ? Value(*asset.burstIdentifier) : Value(),
        asset.representsBurst,
        static_cast<std::int64_t>(asset.burstSelectionTypes),
    };
}

} // namespace exifcard
