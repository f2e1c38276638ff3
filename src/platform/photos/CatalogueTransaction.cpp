#include "platform/photos/CatalogueTransaction.h"

#include "platform/photos/CatalogueWatcher.h"
#include "platform/photos/PhotoCatalogue.h"

namespace exifcard {

std::int64_t lastChange(SQLiteDatabase& database) {
    auto answer = database.query("SELECT value FROM state WHERE name = 'change'");
    return answer.step() ? answer.integer(0) : 0;
}

CatalogueTransaction::CatalogueTransaction(
    std::shared_ptr<PhotoCatalogue> catalogue, CatalogueConnections::DatabasePtr database)
    : _catalogue(std::move(catalogue))
    , _database(std::move(database)) {
    _database->beginImmediate();
    _database->execute("UPDATE state SET value = value + 1 WHERE name = 'change'");
    _change = lastChange(*_database);
}

CatalogueTransaction::~CatalogueTransaction() {
    _database->rollBack();
}

void CatalogueTransaction::commit() {
    _database->commit();
    if (!_database->hasFailed()) {
        _catalogue->watcher().noteChange();
    }
}

} // namespace exifcard
