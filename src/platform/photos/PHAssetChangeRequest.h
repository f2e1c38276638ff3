#pragma once

#include "platform/corelocation/CLLocation.h"
#include "platform/foundation/Date.h"
#include "platform/photos/PHAsset.h"

#include <memory>
#include <optional>
#include <span>
#include <string>

namespace exifcard {

/// Changes what the library knows of an asset. Made and used inside a change block only; outside one every
/// call raises `PlatformException`.
class PHAssetChangeRequest {
public:
    /// @throws PlatformException for an asset without identifier.
    static PHAssetChangeRequest changeRequestForAsset(const PHAsset& asset);
    /// Moves the assets to the recently deleted ones, which no fetch answers; their files stay.
    static void deleteAssets(std::span<const PHAssetPtr> assets);

    /// Also moves the modification date.
    void setFavorite(bool isFavorite);
    void setHidden(bool isHidden);
    /// The library's date alone; the file keeps its own. Nothing: absent.
    void setCreationDate(std::optional<Date> date);
    void setLocation(const std::optional<CLLocation>& location);

private:
    explicit PHAssetChangeRequest(std::string identifier) : _identifier(std::move(identifier)) {}

    std::string _identifier;
};

} // namespace exifcard
