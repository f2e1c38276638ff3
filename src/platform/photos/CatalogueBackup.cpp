#include "platform/photos/CatalogueBackup.h"

#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/photos/CatalogueSchema.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/sqlite/SQLiteDatabase.h"

#include <fmt/format.h>

#include <filesystem>
#include <string_view>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {
namespace {

constexpr std::string_view kCompanions[] = {"-wal", "-shm"};

/// Brings a backup up to date, or fills an empty one: its own 'change' is the last that it knows of. In this
/// order: later statements ask for what earlier ones copied.
constexpr std::string_view kCopies[] = {
    "DELETE FROM roots",
    "INSERT INTO roots SELECT * FROM catalogue.roots",
    "DELETE FROM album_assets WHERE NOT EXISTS (SELECT 1 FROM catalogue.albums AS now WHERE now.id = album"
    " AND now.folder IS NULL AND now.changed <= (SELECT value FROM state WHERE name = 'change'))",
    "DELETE FROM albums",
    "INSERT INTO albums SELECT * FROM catalogue.albums WHERE folder IS NULL",
    "INSERT OR REPLACE INTO album_assets SELECT * FROM catalogue.album_assets WHERE album IN"
    " (SELECT id FROM albums WHERE changed > (SELECT value FROM state WHERE name = 'change'))",
    "DELETE FROM assets WHERE NOT EXISTS (SELECT 1 FROM catalogue.assets AS now WHERE now.id = assets.id"
    " AND now.changed <= (SELECT value FROM state WHERE name = 'change')"
    " AND (now.favorite <> 0 OR now.hidden <> 0 OR now.user_fields <> 0 OR now.trashed <> 0"
    " OR EXISTS (SELECT 1 FROM album_assets WHERE asset = now.id)))",
    "DELETE FROM files WHERE NOT EXISTS (SELECT 1 FROM assets WHERE assets.id = asset)",
    // Columns are named: the generated one cannot be written.
    "INSERT INTO assets (id, uuid, folder, name, media_type, subtypes, playback, source_type, width, height,"
    " created, modified, added, duration, located, latitude, longitude, altitude, horizontal_accuracy,"
    " vertical_accuracy, course, speed, located_at, favorite, hidden, burst, represents_burst,"
    " burst_selection, title, rating, traits, user_fields, vanished, trashed, changed)"
    " SELECT id, uuid, folder, name, media_type, subtypes, playback, source_type, width, height, created,"
    " modified, added, duration, located, latitude, longitude, altitude, horizontal_accuracy,"
    " vertical_accuracy, course, speed, located_at, favorite, hidden, burst, represents_burst,"
    " burst_selection, title, rating, traits, user_fields, 1, trashed, changed FROM catalogue.assets AS now"
    " WHERE id IN (SELECT id FROM catalogue.assets WHERE favorite <> 0 OR hidden <> 0 OR user_fields <> 0"
    " OR trashed <> 0 UNION SELECT asset FROM album_assets)"
    " AND NOT EXISTS (SELECT 1 FROM main.assets AS kept WHERE kept.id = now.id)",
    // Without a stamp, so that every file is read again.
    "INSERT OR REPLACE INTO files SELECT id, asset, folder, name, type, type_identifier, -1, 0, 0, 0, quick,"
    " whole, content, video_offset, video_length, orientation FROM catalogue.files AS now"
    " WHERE asset IN (SELECT id FROM assets) AND NOT EXISTS (SELECT 1 FROM main.files AS kept"
    " WHERE kept.asset = now.asset)",
    "DELETE FROM folders",
    "INSERT INTO folders SELECT * FROM catalogue.folders WHERE id IN"
    " (SELECT folder FROM files UNION SELECT folder FROM assets)",
    "INSERT OR REPLACE INTO state SELECT * FROM catalogue.state WHERE name = 'change'",
    "INSERT OR REPLACE INTO state VALUES ('rebuild', 1)",
};

void removeWithCompanions(const std::string& path) {
    ::unlink(path.c_str());
    for (const std::string_view companion : kCompanions) {
        ::unlink(fmt::format("{}{}", path, companion).c_str());
    }
}

void copyUserState(SQLiteDatabase& backup) {
    backup.execute("BEGIN IMMEDIATE");
    for (const std::string_view statement : kCopies) {
        backup.execute(statement);
    }
    backup.commit();
}

/// Writes what has changed into a backup of this catalogue. False where there is no such or that failed; it
/// is as it was then.
bool updateBackup(const std::string& catalogue, const std::string& backup) {
    if (::access(backup.c_str(), F_OK) != 0) {
        return false;
    }
    SQLiteDatabase database(backup, catalogueMigrations());
    database.execute("ATTACH ? AS catalogue", {catalogue});
    auto isNewer = database.query(
        "SELECT 1 FROM state JOIN catalogue.state AS now USING (name) WHERE name = 'change' AND state.value > now.value");
    if (isNewer.step()) {
        return false; // The catalogue was begun anew without it.
    }
    copyUserState(database);
    return !database.hasFailed();
}

std::optional<std::string> copyIntoNewFile(const std::string& catalogue, const std::string& copy) {
    SQLiteDatabase database(copy, catalogueMigrations(), Durability::Replaceable);
    database.execute("ATTACH ? AS catalogue", {catalogue});
    copyUserState(database);
    return database.error();
}

/// Held while files are moved about, so that two programs do not do it at once.
FileDescriptor lockOf(const std::string& catalogue) {
    FileDescriptor lock(::open((catalogue + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (lock.isOpen()) {
        ::flock(lock.number(), LOCK_EX);
    }
    return lock;
}

bool isGoodCatalogue(const std::string& path) {
    if (::access(path.c_str(), F_OK) != 0) {
        return false;
    }
    SQLiteDatabase database(path, catalogueMigrations());
    return lastChange(database) != 0;
}

void moveAside(const std::string& catalogue) {
    const std::string aside = catalogue + ".damaged";
    removeWithCompanions(aside);
    for (const std::string_view companion : {kCompanions[0], kCompanions[1], std::string_view()}) {
        ::rename(
            fmt::format("{}{}", catalogue, companion).c_str(), fmt::format("{}{}", aside, companion).c_str());
    }
    errorLog(fmt::format("{} is damaged; it was moved to {} and is begun anew", catalogue, aside));
}

} // namespace

bool writeCatalogueBackup(const std::string& catalogue, const std::string& backup) {
    const FileDescriptor lock = lockOf(catalogue);
    if (updateBackup(catalogue, backup)) {
        return true;
    }
    const std::string copy = backup + ".new";
    removeWithCompanions(copy);
    if (const auto error = copyIntoNewFile(catalogue, copy)) {
        errorLog(*error);
    } else if (moveIntoPlace(copy, backup)) {
        return true;
    }
    removeWithCompanions(copy);
    return false;
}

std::uint64_t fileNumberOf(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

void restoreCatalogue(const std::string& catalogue, const std::string& backup, std::uint64_t damaged) {
    const FileDescriptor lock = lockOf(catalogue);
    if (fileNumberOf(catalogue) != damaged && isGoodCatalogue(catalogue)) {
        return; // Another program was first.
    }
    if (::access(catalogue.c_str(), F_OK) == 0) {
        moveAside(catalogue);
    }
    const std::string copy = catalogue + ".new";
    std::error_code error;
    if (isGoodCatalogue(backup) &&
        std::filesystem::copy_file(backup, copy, std::filesystem::copy_options::overwrite_existing, error)) {
        ::rename(copy.c_str(), catalogue.c_str());
    }
}

} // namespace exifcard
