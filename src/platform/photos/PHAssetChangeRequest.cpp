#include "platform/photos/PHAssetChangeRequest.h"

#include "platform/foundation/PlatformException.h"
#include "platform/photos/AssetRow.h"
#include "platform/photos/ChangeBlock.h"

#include <fmt/format.h>

namespace exifcard {
namespace {

/// The bits of `user_fields`: what the import leaves as the user set it.
constexpr std::int64_t kUserSetCreationDate = 1;
constexpr std::int64_t kUserSetLocation = 2;

/// Updates one asset.
/// @param assignments  "favorite = ?", with their arguments.
void addUpdate(const std::string& identifier, std::string_view assignments, std::vector<Value> arguments) {
    auto step =
        [uuid = uuidOfIdentifier(identifier), arguments = std::move(arguments),
            sql = fmt::format("UPDATE assets SET {}, changed = ? WHERE uuid = ? RETURNING id", assignments)](
            SQLiteDatabase& database, std::int64_t change) -> std::optional<PHError> {
        std::vector<Value> all = arguments;
        all.emplace_back(change);
        all.emplace_back(uuid);
        if (database.query(sql, all).step() || database.hasFailed()) {
            return std::nullopt; // A failure is told at the end of the block.
        }
        return PHError{PHErrorCode::IdentifierNotFound, "The library does not hold that asset."};
    };
    ChangeBlock::current().add(std::move(step));
}

Value valueOf(const std::optional<Date>& date) {
    return date ? Value(*date) : Value();
}

} // namespace

PHAssetChangeRequest PHAssetChangeRequest::changeRequestForAsset(const PHAsset& asset) {
    ChangeBlock::current();
    if (asset.localIdentifier.empty()) {
        throw PlatformException(
            "NSInvalidArgumentException", "a change request needs an asset of the library");
    }
    return PHAssetChangeRequest(asset.localIdentifier);
}

void PHAssetChangeRequest::deleteAssets(std::span<const PHAssetPtr> assets) {
    ChangeBlock::current();
    for (const PHAssetPtr& asset : assets) {
        if (asset) {
            addUpdate(asset->localIdentifier, "trashed = 1", {});
        }
    }
}

void PHAssetChangeRequest::setFavorite(bool isFavorite) {
    addUpdate(_identifier, "favorite = ?, modified = ?", {isFavorite, Date::now()});
}

void PHAssetChangeRequest::setHidden(bool isHidden) {
    addUpdate(_identifier, "hidden = ?", {isHidden});
}

void PHAssetChangeRequest::setCreationDate(std::optional<Date> date) {
    addUpdate(
        _identifier, "created = ?, user_fields = user_fields | ?", {valueOf(date), kUserSetCreationDate});
}

void PHAssetChangeRequest::setLocation(const std::optional<CLLocation>& location) {
    const CLLocation place = location.value_or(CLLocation{});
    const auto placed = [&location](double value) { return location ? Value(value) : Value(); };
    addUpdate(_identifier,
        "located = ?, latitude = ?, longitude = ?, altitude = ?, horizontal_accuracy = ?, vertical_accuracy = ?,"
        " course = ?, speed = ?, located_at = ?, user_fields = user_fields | ?",
        {location.has_value(), placed(place.coordinate.latitude), placed(place.coordinate.longitude),
            placed(place.altitude), placed(place.horizontalAccuracy), placed(place.verticalAccuracy),
            placed(place.course), placed(place.speed), valueOf(place.timestamp), kUserSetLocation});
}

} // namespace exifcard
