#pragma once

#include "platform/sqlite/SQLiteDatabase.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// The open connections to the catalogue's file, kept for the next who reads. Thread-safe.
class CatalogueConnections {
public:
    using DatabasePtr = std::shared_ptr<SQLiteDatabase>;

    /// @param folder       Where `library.sqlite` and its backup lie.
    /// @param longestWait  For other programs that write.
    explicit CatalogueConnections(
        std::string folder, std::chrono::milliseconds longestWait = SQLiteDatabase::kLongestWait);
    ~CatalogueConnections();
    CatalogueConnections(const CatalogueConnections&) = delete;
    CatalogueConnections& operator=(const CatalogueConnections&) = delete;

    /// Who tells why a connection failed.
    enum class Failures { Logged, ToldByCaller };

    /// A connection for one thread at a time, taken back when the last pointer is dropped. Null where there
    /// is no catalogue yet. One that has failed answers nothing; one log line told why.
    DatabasePtr reader(Failures failures = Failures::Logged);
    /// The same, but the file is made where there is none, so it is never null. Whoever writes looks whether
    /// it failed and tells it: nothing is logged.
    DatabasePtr writer();

    /// Writes what only the catalogue knows beside it. Blocks. One log line where that fails.
    void writeBackup();

private:
    struct Pool;

    DatabasePtr lease(bool mayCreate, Failures failures);

    std::shared_ptr<Pool> _pool;
    std::mutex _backupMutex; // One backup at a time.
};

} // namespace exifcard
