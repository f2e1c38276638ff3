#include "platform/photos/CatalogueConnections.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/photos/CatalogueBackup.h"
#include "platform/photos/CatalogueSchema.h"

#include <utility>

#include <unistd.h>

namespace exifcard {
namespace {

/// Pages that are read at once on a computer of today; more only take memory.
constexpr std::size_t kMostIdleConnections = 4;

} // namespace

struct CatalogueConnections::Pool {
    explicit Pool(const std::string& home)
        : folder(home)
        , file(home + "/library.sqlite")
        , backup(home + "/library-backup.sqlite") {}

    const std::string folder;
    const std::string file;
    const std::string backup;

    std::mutex mutex;
    std::vector<std::unique_ptr<SQLiteDatabase>> idle; // Guarded by mutex; all of the file of `number`.
    std::uint64_t number = 0;                          // Guarded by mutex.
    bool isDamaged = false;                            // Guarded by mutex.
    std::optional<std::string> error;                  // Guarded by mutex.

    /// An idle connection, or null.
    std::unique_ptr<SQLiteDatabase> takeIdle() {
        const std::scoped_lock lock(mutex);
        if (const std::uint64_t now = fileNumberOf(file); now != number) {
            idle.clear(); // Someone took the file away.
            number = now;
        }
        if (idle.empty() || isDamaged) {
            return nullptr;
        }
        auto database = std::move(idle.back());
        idle.pop_back();
        return database;
    }

    void takeBack(std::unique_ptr<SQLiteDatabase> database) {
        database->rollBack();
        const std::scoped_lock lock(mutex);
        if (database->hasFailed()) {
            isDamaged = isDamaged || database->isDamaged();
            if (error != database->error()) {
                errorLog(*database->error());
            }
            error = database->error();
            return;
        }
        error.reset();
        if (idle.size() < kMostIdleConnections && fileNumberOf(file) == number) {
            idle.push_back(std::move(database));
        }
    }

    /// The number of the file that was found damaged since the last call; 0: none.
    std::uint64_t takeDamage() {
        const std::scoped_lock lock(mutex);
        if (!std::exchange(isDamaged, false)) {
            return 0;
        }
        idle.clear();
        return number;
    }

    std::unique_ptr<SQLiteDatabase> open() {
        if (const std::uint64_t damaged = takeDamage(); damaged != 0) {
            restoreCatalogue(file, backup, damaged);
        }
        auto database = std::make_unique<SQLiteDatabase>(file, catalogueMigrations());
        if (database->isDamaged()) {
            database.reset();
            restoreCatalogue(file, backup, fileNumberOf(file));
            database = std::make_unique<SQLiteDatabase>(file, catalogueMigrations());
        }
        const std::scoped_lock lock(mutex);
        number = fileNumberOf(file);
        return database;
    }
};

CatalogueConnections::CatalogueConnections(std::string folder) : _pool(std::make_shared<Pool>(folder)) {
}

CatalogueConnections::~CatalogueConnections() = default;

CatalogueConnections::DatabasePtr CatalogueConnections::lease(bool mayCreate) {
    auto database = _pool->takeIdle();
    if (!database) {
        const bool isThere = ::access(_pool->file.c_str(), F_OK) == 0;
        const bool hasBackup = ::access(_pool->backup.c_str(), F_OK) == 0;
        if (!isThere && !hasBackup && !mayCreate) {
            return nullptr;
        }
        if (!isThere) {
            makeFolder(_pool->folder);
            restoreCatalogue(_pool->file, _pool->backup, /*damaged=*/0);
        }
        database = _pool->open();
    }
    return {database.release(), [pool = _pool](SQLiteDatabase* returned) {
                pool->takeBack(std::unique_ptr<SQLiteDatabase>(returned));
            }};
}

CatalogueConnections::DatabasePtr CatalogueConnections::reader() {
    return lease(/*mayCreate=*/false);
}

CatalogueConnections::DatabasePtr CatalogueConnections::writer() {
    return lease(/*mayCreate=*/true);
}

void CatalogueConnections::writeBackup() {
    const std::scoped_lock lock(_backupMutex);
    writeCatalogueBackup(_pool->file, _pool->backup);
}

std::optional<std::string> CatalogueConnections::error() const {
    const std::scoped_lock lock(_pool->mutex);
    return _pool->error;
}

} // namespace exifcard
