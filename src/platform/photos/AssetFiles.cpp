#include "platform/photos/AssetFiles.h"

#include "platform/foundation/PropertyListText.h"
#include "platform/photos/AssetRow.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace exifcard {
namespace {

/// An asset has a few; more only a damaged catalogue holds.
constexpr int kMostFilesOfAsset = 64;

constexpr std::string_view kFiles =
    "SELECT files.id, roots.path, folders.path, files.name, files.size, files.type, type_identifier,"
    " video_offset, video_length, roots.kind, files.modified, files.orientation FROM files JOIN folders ON folders.id = files.folder"
    " JOIN roots ON roots.id = folders.root WHERE {} AND files.type > 0 ORDER BY files.type, files.id LIMIT {}";

/// Whether a path stays below the folder that it starts from, whoever wrote it.
bool staysBelow(const std::string& path) {
    const std::filesystem::path parts(path);
    return !path.empty() && parts.is_relative() && path.find('\0') == std::string::npos &&
           std::ranges::none_of(parts, [](const auto& part) { return part == ".."; });
}

std::optional<StoredFile> fileFromRow(const SQLiteStatement& row, const PhotoCatalogue& catalogue) {
    StoredFile stored;
    stored.file.number = row.integer(0);
    stored.file.root = row.text(1).value_or("");
    const std::string folder = row.text(2).value_or("");
    stored.file.path = (folder.empty() ? "" : folder + '/') + row.text(3).value_or("");
    stored.file.sizeInBytes = std::max<std::int64_t>(0, row.integer(4));
    stored.type = static_cast<PHAssetResourceType>(row.integer(5));
    stored.uniformTypeIdentifier = row.text(6).value_or("");
    stored.embeddedVideoOffset = std::max<std::int64_t>(0, row.integer(7));
    stored.embeddedVideoLength = std::max<std::int64_t>(0, row.integer(8));
    stored.modified = row.integer(10);
    const std::int64_t orientation = row.integer(11);
    stored.orientation = orientation >= 1 && orientation <= 8 ? static_cast<int>(orientation) : 0;
    stored.source = catalogue.byteSource(row.text(9).value_or(""));
    return staysBelow(stored.file.path) ? std::optional(std::move(stored)) : std::nullopt;
}

std::vector<StoredFile> filesWhere(
    PhotoCatalogue& catalogue, std::string_view condition, const Value& argument) {
    std::vector<StoredFile> files;
    const auto database = catalogue.connections().reader();
    if (!database) {
        return files;
    }
    auto rows = database->query(fmt::format(kFiles, condition, kMostFilesOfAsset), {argument});
    while (rows.step()) {
        if (auto file = fileFromRow(rows, catalogue)) {
            files.push_back(std::move(*file));
        }
    }
    return files;
}

} // namespace

std::string StoredFile::displayName() const {
    const std::size_t slash = file.path.rfind('/');
    return propertylist::wellFormedText(file.path.substr(slash == std::string::npos ? 0 : slash + 1));
}

std::vector<StoredFile> filesOfAsset(PhotoCatalogue& catalogue, std::string_view localIdentifier) {
    return filesWhere(
        catalogue, "files.asset = (SELECT id FROM assets WHERE uuid = ?)", uuidOfIdentifier(localIdentifier));
}

std::optional<StoredFile> fileOfNumber(PhotoCatalogue& catalogue, std::int64_t number) {
    auto files = filesWhere(catalogue, "files.id = ?", number);
    return files.empty() ? std::nullopt : std::optional(std::move(files.front()));
}

} // namespace exifcard
