#pragma once

#include "platform/photos/CatalogueConnections.h"

#include <cstdint>
#include <memory>

namespace exifcard {

class PhotoCatalogue;

/// The number of the last committed change, or of the one that is being made; 0 after a failure.
std::int64_t lastChange(SQLiteDatabase& database);

/// One change of the catalogue, alone among writers. Rolled back when it is not committed.
class CatalogueTransaction {
public:
    CatalogueTransaction(
        std::shared_ptr<PhotoCatalogue> catalogue, CatalogueConnections::DatabasePtr database);
    ~CatalogueTransaction();
    CatalogueTransaction(const CatalogueTransaction&) = delete;
    CatalogueTransaction& operator=(const CatalogueTransaction&) = delete;

    /// What touched rows and albums get as `changed`; greater than any before.
    std::int64_t change() const { return _change; }
    /// Observers hear of it afterwards. Does nothing when something has failed.
    void commit();

private:
    std::shared_ptr<PhotoCatalogue> _catalogue;
    CatalogueConnections::DatabasePtr _database;
    std::int64_t _change = 0;
};

} // namespace exifcard
