#include "platform/photos/CatalogueBackup.h"

#include "platform/foundation/FileDescriptor.h"
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

/// In this order: later statements ask for what earlier ones copied.
constexpr std::string_view kCopies[] = {
    "INSERT INTO roots SELECT * FROM catalogue.roots",
    "INSERT INTO albums SELECT * FROM catalogue.albums WHERE folder IS NULL",
    "INSERT INTO album_assets SELECT * FROM catalogue.album_assets WHERE album IN (SELECT id FROM albums)",
    // Columns are named: the generated one cannot be written.
    "INSERT INTO assets (id, uuid, folder, name, media_type, subtypes, playback, source_type, width, height,"
    " created, modified, added, duration, located, latitude, longitude, altitude, horizontal_accuracy,"
    " vertical_accuracy, course, speed, located_at, favorite, hidden, burst, represents_burst,"
    " burst_selection, title, rating, traits, user_fields, vanished, trashed, changed)"
    " SELECT id, uuid, folder, name, media_type, subtypes, playback, source_type, width, height, created,"
    " modified, added, duration, located, latitude, longitude, altitude, horizontal_accuracy,"
    " vertical_accuracy, course, speed, located_at, favorite, hidden, burst, represents_burst,"
    " burst_selection, title, rating, traits, user_fields, 1, trashed, changed FROM catalogue.assets"
    " WHERE id IN (SELECT id FROM catalogue.assets WHERE favorite <> 0 OR hidden <> 0 OR user_fields <> 0"
    " OR trashed <> 0 UNION SELECT asset FROM album_assets)",
    // Without a stamp, so that every file is read again.
    "INSERT INTO files SELECT id, asset, folder, name, type, type_identifier, -1, 0, 0, 0, quick, whole,"
    " content, video_offset, video_length, orientation"
    " FROM catalogue.files WHERE asset IN (SELECT id FROM assets)",
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

std::optional<std::string> copyUserState(const std::string& catalogue, const std::string& copy) {
    SQLiteDatabase database(copy, catalogueMigrations());
    database.execute("ATTACH ? AS catalogue", {catalogue});
    database.execute("BEGIN");
    for (const std::string_view statement : kCopies) {
        database.execute(statement);
    }
    database.commit();
    database.execute("DETACH catalogue");
    // A file without companions, which can be moved and copied.
    database.execute("PRAGMA journal_mode = DELETE");
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
    const std::string copy = backup + ".new";
    removeWithCompanions(copy);
    if (const auto error = copyUserState(catalogue, copy)) {
        errorLog(*error);
        removeWithCompanions(copy);
        return false;
    }
    return ::rename(copy.c_str(), backup.c_str()) == 0;
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
