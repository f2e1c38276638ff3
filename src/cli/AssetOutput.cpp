#include "cli/AssetOutput.h"

#include "cli/AssetNames.h"
#include "cli/DisplayText.h"
#include "cli/JsonWriter.h"
#include "cli/LocalTime.h"
#include "cli/PhotoFile.h"
#include "cli/PhotoRows.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "metadata/ExifInformation.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>

namespace exifcard {
namespace {

/// As many characters of an identifier as tell one asset from others in a library of any size that people
/// have.
constexpr std::size_t kShownCharacters = 13;

struct SubtypeName {
    std::uint64_t subtype;
    std::string_view name;
};

constexpr SubtypeName kSubtypeNames[] = {
    {kPHAssetMediaSubtypePhotoLive, "live"},
    {kPHAssetMediaSubtypePhotoPanorama, "panorama"},
    {kPHAssetMediaSubtypePhotoScreenshot, "screenshot"},
    {kPHAssetMediaSubtypePhotoDepthEffect, "depth"},
    {kPHAssetMediaSubtypePhotoHDR, "HDR"},
    {kPHAssetMediaSubtypeVideoHighFrameRate, "slo-mo"},
    {kPHAssetMediaSubtypeVideoTimelapse, "time-lapse"},
    {kPHAssetMediaSubtypeVideoScreenRecording, "recording"},
};

std::string kindOf(const PHAsset& asset) {
    for (const SubtypeName& subtype : kSubtypeNames) {
        if ((asset.mediaSubtypes & subtype.subtype) != 0) {
            return std::string(subtype.name);
        }
    }
    return asset.mediaType == PHAssetMediaType::Video ? "video" : "photo";
}

std::string shortTime(const std::optional<Date>& date) {
    constexpr std::size_t kUpToMinutes = 16; // "2024-05-06T07:08"
    std::string text = date ? localTimeText(*date).substr(0, kUpToMinutes) : "";
    if (text.size() == kUpToMinutes) {
        text[text.find('T')] = ' ';
    }
    return text;
}

void writeAsset(JsonWriter& json, const PHAsset& asset, const std::optional<std::string>& file) {
    const auto date = [&json](std::string_view key, const std::optional<Date>& moment) {
        json.key(key).textOrNull(moment ? std::optional(localTimeText(*moment)) : std::nullopt);
    };
    json.key("id").text(asset.localIdentifier);
    if (file) {
        json.file(*file);
    } else {
        json.key("file").null();
    }
    json.key("mediaType").integer(static_cast<std::int64_t>(asset.mediaType));
    json.key("mediaSubtypes").integer(static_cast<std::int64_t>(asset.mediaSubtypes));
    date("created", asset.creationDate);
    date("modified", asset.modificationDate);
    json.key("width").integer(asset.pixelWidth).key("height").integer(asset.pixelHeight);
    json.key("favourite").boolean(asset.isFavorite).key("cloud").boolean(!file);
    json.key("location");
    if (asset.location) {
        json.beginObject().key("latitude").number(asset.location->coordinate.latitude);
        json.key("longitude").number(asset.location->coordinate.longitude).endObject();
    } else {
        json.null();
    }
}

std::string assetsJSON(const std::vector<PHAssetPtr>& assets, bool wantsRows) {
    const ChosenFields fields = wantsRows ? fieldsOfCard() : ChosenFields();
    std::string text;
    for (const PHAssetPtr& asset : assets) {
        const auto file = fileOfAsset(*asset);
        JsonWriter json;
        json.beginObject();
        writeAsset(json, *asset, file);
        const auto record = wantsRows && file ? readPhoto(*file) : nullptr;
        if (record) {
            json.key("rows");
            writePhotoRows(json, *file, *record, fields);
        }
        text += json.endObject().take() + "\n";
    }
    return text;
}

std::vector<std::string> cellsOf(const PHAsset& asset) {
    return {asset.localIdentifier.substr(0, kShownCharacters), shortTime(asset.creationDate), kindOf(asset),
        fmt::format("{} × {}", asset.pixelWidth, asset.pixelHeight), asset.isFavorite ? "♥" : " ",
        fileOfAsset(asset).value_or("not on this computer")};
}

} // namespace

std::string assetsText(const std::vector<PHAssetPtr>& assets, const SessionOptions& options) {
    if (options.isJSON) {
        return assetsJSON(assets, /*wantsRows=*/false);
    }
    TextTable table;
    for (const PHAssetPtr& asset : assets) {
        table.addRow(cellsOf(*asset));
    }
    return table.text(options.usesColor);
}

std::string assetsWithRows(const std::vector<PHAssetPtr>& assets, const SessionOptions& options) {
    if (options.isJSON) {
        return assetsJSON(assets, /*wantsRows=*/true);
    }
    const ChosenFields fields = fieldsOfCard();
    std::string text;
    for (const PHAssetPtr& asset : assets) {
        TextTable heading;
        heading.addRow(cellsOf(*asset));
        text += text.empty() ? "" : "\n";
        text += heading.text(options.usesColor);
        const auto file = fileOfAsset(*asset);
        const auto record = file ? readPhoto(*file) : nullptr;
        text += record ? photoRowsText(*record, fields, options.usesColor) : "";
    }
    return text;
}

} // namespace exifcard
