#include "platform/photos/CatalogueConnections.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/photos/CatalogueBackup.h"
#include "platform/photos/CatalogueSchema.h"

#include <cerrno>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace exifcard {
namespace {

/// Pages that are read at once on a computer of today; more only take memory.
constexpr std::size_t kMostIdleConnections = 4;

/// What may not be looked at is not taken for missing.
bool mayBeThere(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0 || errno != ENOENT;
}

/// As a full disk or a power cut may leave it. What a program has just begun is so as well, but has no
/// backup.
bool isEmptyFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0;
}

} // namespace

struct CatalogueConnections::Pool {
    Pool(const std::string& home, std::chrono::milliseconds wait)
        : longestWait(wait)
        , folder(home)
        , file(home + "/library.sqlite")
        , backup(home + "/library-backup.sqlite") {}

    const std::chrono::milliseconds longestWait;
    const std::string folder;
    const std::string file;
    const std::string backup;

    std::mutex mutex;
    std::vector<std::unique_ptr<SQLiteDatabase>> idle; // Guarded by mutex; all of the file of `number`.
    std::uint64_t number = 0;                          // Guarded by mutex.
    bool isDamaged = false;                            // Guarded by mutex.
    std::optional<std::string> loggedFailure;          // Guarded by mutex; until something has worked again.

    struct Connection {
        std::unique_ptr<SQLiteDatabase> database;
        std::uint64_t number = 0; ///< Of the file that it reads.
    };

    /// Without a database where none is idle.
    Connection takeIdle() {
        const std::scoped_lock lock(mutex);
        if (const std::uint64_t now = fileNumberOf(file); now != number) {
            idle.clear(); // Someone took the file away.
            number = now;
        }
        if (idle.empty() || isDamaged) {
            return {};
        }
        auto database = std::move(idle.back());
        idle.pop_back();
        return {std::move(database), number};
    }

    void takeBack(Connection connection, Failures failures) {
        auto& database = connection.database;
        database->rollBack();
        const std::scoped_lock lock(mutex);
        if (database->hasFailed()) {
            isDamaged = isDamaged || database->isDamaged();
            if (failures == Failures::Logged && loggedFailure != database->error()) {
                errorLog(*database->error());
                loggedFailure = database->error();
            }
            return;
        }
        loggedFailure.reset();
        if (idle.size() < kMostIdleConnections && connection.number == number) {
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

    std::unique_ptr<SQLiteDatabase> openFile() const {
        return std::make_unique<SQLiteDatabase>(
            file, catalogueMigrations(), Durability::Lasting, longestWait);
    }

    Connection open() {
        if (const std::uint64_t damaged = takeDamage(); damaged != 0) {
            restoreCatalogue(file, backup, damaged);
        } else if (isEmptyFile(file) && ::access(backup.c_str(), F_OK) == 0) {
            restoreCatalogue(file, backup, fileNumberOf(file));
        }
        auto database = openFile();
        if (database->isDamaged()) {
            database.reset();
            restoreCatalogue(file, backup, fileNumberOf(file));
            database = openFile();
        }
        const std::scoped_lock lock(mutex);
        number = fileNumberOf(file);
        return {std::move(database), number};
    }
};

CatalogueConnections::CatalogueConnections(std::string folder, std::chrono::milliseconds longestWait)
    : _pool(std::make_shared<Pool>(std::move(folder), longestWait)) {
}

CatalogueConnections::~CatalogueConnections() = default;

CatalogueConnections::DatabasePtr CatalogueConnections::lease(bool mayCreate, Failures failures) {
    Pool::Connection connection = _pool->takeIdle();
    if (!connection.database) {
        const bool isThere = mayBeThere(_pool->file);
        const bool hasBackup = ::access(_pool->backup.c_str(), F_OK) == 0;
        if (!isThere && !hasBackup && !mayCreate) {
            return nullptr;
        }
        if (!isThere) {
            makeFolder(_pool->folder);
            restoreCatalogue(_pool->file, _pool->backup, /*damaged=*/0);
        }
        connection = _pool->open();
    }
    return {connection.database.release(),
        [pool = _pool, number = connection.number, failures](SQLiteDatabase* returned) {
            pool->takeBack({std::unique_ptr<SQLiteDatabase>(returned), number}, failures);
        }};
}

CatalogueConnections::DatabasePtr CatalogueConnections::reader(Failures failures) {
    return lease(/*mayCreate=*/false, failures);
}

CatalogueConnections::DatabasePtr CatalogueConnections::writer() {
    return lease(/*mayCreate=*/true, Failures::ToldByCaller);
}

void CatalogueConnections::writeBackup() {
    const std::scoped_lock lock(_backupMutex);
    writeCatalogueBackup(_pool->file, _pool->backup);
}

} // namespace exifcard
