#include "platform/photos/CatalogueWriter.h"

#include "platform/foundation/UTF8.h"
#include "platform/photos/AssetRow.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/photos/PHAssetCollection.h"
#include "platform/photos/PhotoCatalogue.h"

#include <fmt/format.h>

#include <map>
#include <utility>

namespace exifcard {
namespace {

/// Files of the same content that are told; more are copies of copies.
constexpr std::int64_t kMostFilesOfOneContent = 100;

constexpr std::string_view kFileColumns =
    "id, asset, folder, name, type, type_identifier, size, modified, changed, inode, quick, whole,"
    " content, video_offset, video_length, orientation, (SELECT vanished FROM assets WHERE assets.id = files.asset)";

Value bytesValue(std::string_view bytes) {
    return Data::fromText(bytes);
}

CatalogueFile fileFromRow(const SQLiteStatement& row) {
    CatalogueFile file;
    file.number = row.integer(0);
    file.asset = row.integer(1);
    file.folder = row.integer(2);
    file.name = row.text(3).value_or("");
    file.type = static_cast<PHAssetResourceType>(row.integer(4));
    file.uniformTypeIdentifier = row.text(5).value_or("");
    file.stamp = {row.integer(6), row.integer(7), row.integer(8), row.integer(9)};
    file.quickFingerprint = row.integer(10);
    file.wholeFingerprint = row.integer(11);
    file.contentIdentifier = row.text(12).value_or("");
    file.embeddedVideoOffset = row.integer(13);
    file.embeddedVideoLength = row.integer(14);
    file.orientation = static_cast<int>(row.integer(15));
    file.isVanished = row.integer(16) != 0 || row.isNull(16);
    return file;
}

std::vector<CatalogueFile> filesOfQuery(SQLiteStatement& query) {
    std::vector<CatalogueFile> files;
    while (query.step()) {
        files.push_back(fileFromRow(query));
    }
    return files;
}

Value valueOf(const std::optional<std::string>& text) {
    return text ? Value(*text) : Value();
}

} // namespace

/// Statements are prepared once and used for every asset.
class CatalogueWriter::Implementation {
public:
    explicit Implementation(std::shared_ptr<PhotoCatalogue> written)
        : catalogue(std::move(written))
        , database(catalogue->connections().writer()) {}

    /// To be called before each change: begins a batch, or ends a full one and begins the next.
    void willChange() {
        if (transaction && ++changes > kChangesATransaction) {
            commit();
        }
        if (!transaction) {
            transaction.emplace(catalogue, database);
            changes = 1;
        }
    }

    void commit() {
        if (transaction) {
            transaction->commit();
            transaction.reset();
        }
        if (std::exchange(hasChangedRoots, false) && !database->hasFailed()) {
            catalogue->connections().writeBackup();
        }
    }

    SQLiteStatement& prepared(std::string_view sql, std::span<const Value> arguments) {
        const auto found = statements.find(sql);
        if (found == statements.end()) {
            return statements.emplace(sql, database->query(sql, arguments)).first->second;
        }
        found->second.restart(arguments);
        return found->second;
    }
    SQLiteStatement& prepared(std::string_view sql, std::initializer_list<Value> arguments) {
        return prepared(sql, std::span(arguments));
    }
    void run(std::string_view sql, std::span<const Value> arguments) {
        SQLiteStatement& statement = prepared(sql, arguments);
        while (statement.step()) {}
        statement.restart({}); // Lets the batch be committed.
    }
    void run(std::string_view sql, std::initializer_list<Value> arguments) { run(sql, std::span(arguments)); }

    /// The first column of the first row; 0 without one.
    std::int64_t number(std::string_view sql, std::initializer_list<Value> arguments) {
        SQLiteStatement& statement = prepared(sql, arguments);
        const std::int64_t answer = statement.step() ? statement.integer(0) : 0;
        statement.restart({});
        return answer;
    }

    std::int64_t change() const { return transaction->change(); }
    std::int64_t numberOfRoot(std::int64_t folder) {
        return number("SELECT root FROM folders WHERE id = ?", {folder});
    }
    std::string uuidFor(const CatalogueAsset& asset);
    std::int64_t vanishedAssetOf(const CatalogueFile& file);
    void replaceInBurst(std::int64_t vanished);
    std::int64_t insertAsset(const CatalogueAsset& asset);
    void updateAsset(const CatalogueAsset& asset);
    void storeFiles(std::int64_t number, const std::vector<CatalogueFile>& files);

    const std::shared_ptr<PhotoCatalogue> catalogue;
    const CatalogueConnections::DatabasePtr database;
    std::map<std::string_view, SQLiteStatement> statements; // Keys are literals.
    std::optional<CatalogueTransaction> transaction;
    std::size_t changes = 0;
    bool hasChangedRoots = false;
};

CatalogueWriter::CatalogueWriter(std::shared_ptr<PhotoCatalogue> catalogue)
    : _implementation(std::make_unique<Implementation>(std::move(catalogue))) {
}

CatalogueWriter::~CatalogueWriter() {
    commit();
}

void CatalogueWriter::commit() {
    _implementation->commit();
}

std::optional<std::string> CatalogueWriter::error() const {
    return _implementation->database->error();
}

std::vector<LibraryRoot> CatalogueWriter::roots() {
    std::vector<LibraryRoot> roots;
    auto query =
        _implementation->database->query("SELECT id, path, kind, source_type FROM roots ORDER BY id");
    while (query.step()) {
        roots.push_back({query.integer(0), query.text(1).value_or(""), query.text(2).value_or(""),
            static_cast<std::uint64_t>(query.integer(3))});
    }
    return roots;
}

std::int64_t CatalogueWriter::storeRoot(const LibraryRoot& root) {
    Implementation& writer = *_implementation;
    constexpr std::string_view kNumber = "SELECT id FROM roots WHERE path = ?";
    if (const std::int64_t known = writer.number(kNumber, {bytesValue(root.path)}); known != 0) {
        return known;
    }
    writer.willChange();
    writer.run("INSERT OR IGNORE INTO roots (path, kind, source_type) VALUES (?, ?, ?)",
        {bytesValue(root.path), root.kind, static_cast<std::int64_t>(root.sourceType)});
    writer.hasChangedRoots = true;
    return writer.number(kNumber, {bytesValue(root.path)});
}

void CatalogueWriter::removeRoot(std::int64_t root) {
    for (const LibraryFolder& folder : foldersOfRoot(root)) {
        removeFolder(folder.number);
    }
    _implementation->willChange();
    _implementation->run("DELETE FROM roots WHERE id = ?", {root});
    _implementation->hasChangedRoots = true;
}

std::vector<LibraryFolder> CatalogueWriter::foldersOfRoot(std::int64_t root) {
    std::vector<LibraryFolder> folders;
    auto query = _implementation->database->query(
        "SELECT id, root, path, is_mount_point FROM folders WHERE root = ? ORDER BY path", {root});
    while (query.step()) {
        folders.push_back(
            {query.integer(0), query.integer(1), query.text(2).value_or(""), query.integer(3) != 0});
    }
    return folders;
}

std::int64_t CatalogueWriter::storeFolder(std::int64_t root, std::string_view path) {
    Implementation& writer = *_implementation;
    constexpr std::string_view kNumber = "SELECT id FROM folders WHERE root = ? AND path = ?";
    if (const std::int64_t known = writer.number(kNumber, {root, bytesValue(path)}); known != 0) {
        return known;
    }
    writer.willChange();
    writer.run("INSERT OR IGNORE INTO folders (root, path) VALUES (?, ?)", {root, bytesValue(path)});
    return writer.number(kNumber, {root, bytesValue(path)});
}

void CatalogueWriter::markMountPoint(std::int64_t folder, bool isMountPoint) {
    _implementation->willChange();
    _implementation->run(
        "UPDATE folders SET is_mount_point = ? WHERE id = ?", {isMountPoint ? 1 : 0, folder});
}

void CatalogueWriter::removeFolder(std::int64_t folder) {
    Implementation& writer = *_implementation;
    writer.willChange();
    writer.run("UPDATE assets SET vanished = 1, changed = ?1 WHERE folder = ?2 AND vanished = 0"
               " AND id IN (SELECT asset FROM files WHERE folder = ?2)",
        {writer.change(), folder});
    writer.run("DELETE FROM albums WHERE folder = ?", {folder});
    // What the user said of an asset is kept with its file, by whose content it may be found again.
    writer.run(
        "DELETE FROM folders WHERE id = ?1 AND NOT EXISTS (SELECT 1 FROM files WHERE folder = ?1)", {folder});
}

void CatalogueWriter::showFolderAsAlbum(std::int64_t folder, std::string_view title) {
    Implementation& writer = *_implementation;
    if (writer.number("SELECT 1 FROM albums WHERE folder = ? AND title = ?", {folder, title}) != 0) {
        return;
    }
    writer.willChange();
    writer.run("INSERT INTO albums (uuid, subtype, title, position, folder, changed)"
               " VALUES (?, ?, ?, (SELECT COALESCE(MAX(position), 0) + 1 FROM albums), ?, ?)"
               " ON CONFLICT (folder) DO UPDATE SET title = excluded.title, changed = excluded.changed",
        {makeUUID(), static_cast<std::int64_t>(PHAssetCollectionSubtype::AlbumSyncedAlbum), title, folder,
            writer.change()});
}

std::vector<CatalogueFile> CatalogueWriter::filesInFolder(std::int64_t folder) {
    static const std::string sql =
        fmt::format("SELECT {} FROM files WHERE folder = ? ORDER BY name", kFileColumns);
    auto query = _implementation->database->query(sql, {folder});
    return filesOfQuery(query);
}

std::optional<CatalogueFile> CatalogueWriter::fileInFolder(std::int64_t folder, std::string_view name) {
    static const std::string sql =
        fmt::format("SELECT {} FROM files WHERE folder = ? AND name = ?", kFileColumns);
    SQLiteStatement& query = _implementation->prepared(sql, {folder, bytesValue(name)});
    const auto files = filesOfQuery(query);
    return files.empty() ? std::nullopt : std::optional(files.front());
}

std::vector<CatalogueFile> CatalogueWriter::filesWithQuickFingerprint(std::int64_t fingerprint) {
    static const std::string sql =
        fmt::format("SELECT {} FROM files WHERE quick = ? AND quick <> 0 ORDER BY id LIMIT ?", kFileColumns);
    return filesOfQuery(_implementation->prepared(sql, {fingerprint, kMostFilesOfOneContent}));
}

std::vector<CatalogueFile> CatalogueWriter::filesWithContentIdentifier(
    std::int64_t folder, std::string_view identifier) {
    static const std::string sql = fmt::format(
        "SELECT {} FROM files WHERE folder = ? AND content = ? AND content <> '' ORDER BY id LIMIT ?",
        kFileColumns);
    return filesOfQuery(_implementation->prepared(sql, {folder, identifier, kMostFilesOfOneContent}));
}

std::int64_t CatalogueWriter::assetRepresentingBurst(std::string_view burstIdentifier) {
    return _implementation->number(
        "SELECT id FROM assets WHERE burst = ? AND represents_burst <> 0 AND vanished = 0",
        {burstIdentifier});
}

std::optional<CatalogueAsset> CatalogueWriter::asset(std::int64_t number) {
    static const std::string sql =
        fmt::format("SELECT {}, title, rating, traits FROM assets WHERE id = ?", kAssetColumns);
    auto query = _implementation->database->query(sql, {number});
    if (!query.step()) {
        return std::nullopt;
    }
    CatalogueAsset asset{.number = number, .properties = assetFromRow(query)};
    asset.title = query.text(kAssetColumnCount);
    if (!query.isNull(kAssetColumnCount + 1)) {
        asset.rating = query.integer(kAssetColumnCount + 1);
    }
    asset.traits = static_cast<std::uint64_t>(query.integer(kAssetColumnCount + 2));
    static const std::string filesSQL =
        fmt::format("SELECT {} FROM files WHERE asset = ? ORDER BY type, id", kFileColumns);
    auto files = _implementation->database->query(filesSQL, {number});
    asset.files = filesOfQuery(files);
    return asset;
}

std::string CatalogueWriter::Implementation::uuidFor(const CatalogueAsset& asset) {
    if (!asset.properties.localIdentifier.empty()) {
        return uuidOfIdentifier(asset.properties.localIdentifier);
    }
    const CatalogueFile& file = asset.files.front();
    SQLiteStatement& folder = prepared(
        "SELECT roots.path, folders.path FROM folders JOIN roots ON roots.id = root WHERE folders.id = ?",
        {file.folder});
    std::string path;
    if (folder.step()) {
        path = folder.text(0).value_or("") + '/' + folder.text(1).value_or("") + '/' + file.name;
    }
    folder.restart({});
    std::string uuid = uuidFromBytes(path);
    const bool isTaken = number("SELECT 1 FROM assets WHERE uuid = ?", {uuid}) != 0;
    return isTaken ? makeUUID() : uuid;
}

/// The asset that the file belonged to, when that one is vanished; else 0.
std::int64_t CatalogueWriter::Implementation::vanishedAssetOf(const CatalogueFile& file) {
    return number("SELECT assets.id FROM files JOIN assets ON assets.id = asset"
                  " WHERE files.folder = ? AND files.name = ? AND vanished <> 0",
        {file.folder, bytesValue(file.name)});
}

std::int64_t CatalogueWriter::Implementation::insertAsset(const CatalogueAsset& asset) {
    static const std::string sql = fmt::format(
        "INSERT INTO assets ({}, title, rating, traits, folder, name, added, user_fields, vanished, trashed, changed)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?,"
        " ?, ?, ?, ?, ?, ?, 0, 0, 0, ?)",
        kAssetColumns);
    PHAsset properties = asset.properties;
    properties.localIdentifier = uuidFor(asset);
    std::vector<Value> values = valuesOfAsset(properties);
    const Value more[] = {valueOf(asset.title), asset.rating ? Value(*asset.rating) : Value(),
        static_cast<std::int64_t>(asset.traits), asset.files.front().folder,
        bytesValue(asset.files.front().name), Date::now(), change()};
    values.insert(values.end(), std::begin(more), std::end(more));
    run(sql, values);
    return database->lastInsertedRow();
}

void CatalogueWriter::Implementation::updateAsset(const CatalogueAsset& asset) {
    // The bits of user_fields keep what the user set: 1 the creation date, 2 the place.
    constexpr std::string_view kSQL =
        "UPDATE assets SET media_type = ?2, subtypes = ?3, playback = ?4, source_type = ?5, width = ?6,"
        " height = ?7, created = CASE WHEN user_fields & 1 THEN created ELSE ?8 END, modified = ?9,"
        " duration = ?10, located = CASE WHEN user_fields & 2 THEN located ELSE ?11 END,"
        " latitude = CASE WHEN user_fields & 2 THEN latitude ELSE ?12 END,"
        " longitude = CASE WHEN user_fields & 2 THEN longitude ELSE ?13 END,"
        " altitude = CASE WHEN user_fields & 2 THEN altitude ELSE ?14 END,"
        " horizontal_accuracy = CASE WHEN user_fields & 2 THEN horizontal_accuracy ELSE ?15 END,"
        " vertical_accuracy = CASE WHEN user_fields & 2 THEN vertical_accuracy ELSE ?16 END,"
        " course = CASE WHEN user_fields & 2 THEN course ELSE ?17 END,"
        " speed = CASE WHEN user_fields & 2 THEN speed ELSE ?18 END,"
        " located_at = CASE WHEN user_fields & 2 THEN located_at ELSE ?19 END,"
        " burst = ?22, represents_burst = ?23, burst_selection = ?24, title = ?25, rating = ?26, traits = ?27,"
        " folder = ?28, name = ?29, vanished = 0, changed = ?30 WHERE id = ?31";
    std::vector<Value> values = valuesOfAsset(asset.properties);
    const Value more[] = {valueOf(asset.title), asset.rating ? Value(*asset.rating) : Value(),
        static_cast<std::int64_t>(asset.traits), asset.files.front().folder,
        bytesValue(asset.files.front().name), change(), asset.number};
    values.insert(values.end(), std::begin(more), std::end(more));
    run(kSQL, values);
}

void CatalogueWriter::Implementation::storeFiles(
    std::int64_t number, const std::vector<CatalogueFile>& files) {
    run("DELETE FROM files WHERE asset = ?", {number});
    for (const CatalogueFile& file : files) {
        run("INSERT OR REPLACE INTO files (asset, folder, name, type, type_identifier, size, modified, changed,"
            " inode, quick, whole, content, video_offset, video_length, orientation)"
            " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            {number, file.folder, bytesValue(file.name), static_cast<std::int64_t>(file.type),
                file.uniformTypeIdentifier, file.stamp.sizeInBytes, file.stamp.modified, file.stamp.changed,
                file.stamp.inode, file.quickFingerprint, file.wholeFingerprint, file.contentIdentifier,
                file.embeddedVideoOffset, file.embeddedVideoLength, file.orientation});
    }
}

std::int64_t CatalogueWriter::storeAsset(const CatalogueAsset& given) {
    Implementation& writer = *_implementation;
    if (given.files.empty()) {
        return 0; // It could never be shown.
    }
    writer.willChange();
    CatalogueAsset asset = given;
    asset.properties.sourceType = static_cast<std::uint64_t>(
        writer.number("SELECT source_type FROM folders JOIN roots ON roots.id = root WHERE folders.id = ?",
            {given.files.front().folder}));
    if (asset.number == 0) {
        asset.number = writer.vanishedAssetOf(given.files.front());
    }
    if (asset.number == 0) {
        asset.number = writer.insertAsset(asset);
    } else {
        writer.updateAsset(asset);
    }
    writer.storeFiles(asset.number, asset.files);
    return writer.database->hasFailed() ? 0 : asset.number;
}

void CatalogueWriter::storeFile(const CatalogueFile& file) {
    Implementation& writer = *_implementation;
    writer.willChange();
    writer.run("DELETE FROM files WHERE folder = ? AND name = ? AND id <> ?",
        {file.folder, bytesValue(file.name), file.number});
    // The asset is named after its first file, so it moves along with that one.
    writer.run(
        "UPDATE assets SET folder = ?1, name = ?2, changed = ?3 WHERE EXISTS (SELECT 1 FROM files WHERE"
        " files.id = ?4 AND files.asset = assets.id AND files.folder = assets.folder"
        " AND files.name = assets.name) AND id = (SELECT asset FROM files WHERE id = ?4)",
        {file.folder, bytesValue(file.name), writer.change(), file.number});
    writer.run(
        "UPDATE files SET folder = ?, name = ?, size = ?, modified = ?, changed = ?, inode = ?, quick = ?,"
        " whole = ? WHERE id = ?",
        {file.folder, bytesValue(file.name), file.stamp.sizeInBytes, file.stamp.modified, file.stamp.changed,
            file.stamp.inode, file.quickFingerprint, file.wholeFingerprint, file.number});
}

/// Another picture stands for the burst for which a vanished one stood.
void CatalogueWriter::Implementation::replaceInBurst(std::int64_t vanished) {
    const std::int64_t next =
        number("SELECT MIN(id) FROM assets WHERE vanished = 0 AND trashed = 0 AND burst ="
               " (SELECT burst FROM assets WHERE id = ? AND represents_burst <> 0)",
            {vanished});
    if (next != 0) {
        willChange();
        run("UPDATE assets SET represents_burst = (id = ?1), changed = ?2 WHERE id IN (?1, ?3)",
            {next, change(), vanished});
    }
}

void CatalogueWriter::markVanished(std::span<const std::int64_t> assets) {
    Implementation& writer = *_implementation;
    for (const std::int64_t asset : assets) {
        writer.willChange();
        writer.run("UPDATE assets SET vanished = 1, changed = ? WHERE id = ? AND vanished = 0",
            {writer.change(), asset});
    }
    for (const std::int64_t asset : assets) {
        writer.replaceInBurst(asset);
    }
}

} // namespace exifcard
