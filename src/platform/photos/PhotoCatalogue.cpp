#include "platform/photos/PhotoCatalogue.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/photos/CatalogueWatcher.h"
#include "platform/photos/LocalFolderByteSource.h"

#include <map>
#include <mutex>
#include <utility>

namespace exifcard {
namespace {

struct Shared {
    std::mutex mutex;
    std::shared_ptr<PhotoCatalogue> catalogue; // Guarded by mutex.
};

Shared& sharedCatalogue() {
    static auto* const shared = new Shared; // Observers may use it until the very end.
    return *shared;
}

} // namespace

struct PhotoCatalogue::Sources {
    std::mutex mutex;
    std::map<std::string, std::shared_ptr<AssetByteSource>, std::less<>> byKind; // Guarded by mutex.
};

std::shared_ptr<PhotoCatalogue> PhotoCatalogue::shared() {
    Shared& shared = sharedCatalogue();
    const std::scoped_lock lock(shared.mutex);
    if (!shared.catalogue) {
        shared.catalogue = inFolder(dataFolder());
    }
    return shared.catalogue;
}

void PhotoCatalogue::setShared(std::shared_ptr<PhotoCatalogue> catalogue) {
    Shared& shared = sharedCatalogue();
    const std::scoped_lock lock(shared.mutex);
    shared.catalogue.swap(catalogue); // The old one ends without the lock.
}

std::shared_ptr<PhotoCatalogue> PhotoCatalogue::inFolder(
    std::string folder, std::chrono::milliseconds longestWait) {
    return std::shared_ptr<PhotoCatalogue>(new PhotoCatalogue(std::move(folder), longestWait));
}

PhotoCatalogue::PhotoCatalogue(std::string folder, std::chrono::milliseconds longestWait)
    : _folder(std::move(folder))
    , _connections(std::make_unique<CatalogueConnections>(_folder, longestWait))
    , _watcher(std::make_unique<CatalogueWatcher>())
    , _sources(std::make_unique<Sources>()) {
    _sources->byKind.emplace("folder", std::make_shared<LocalFolderByteSource>());
}

PhotoCatalogue::~PhotoCatalogue() = default;

std::optional<std::string> PhotoCatalogue::error() {
    if (const auto database = _connections->reader(CatalogueConnections::Failures::ToldByCaller)) {
        lastChange(*database);
        return database->error();
    }
    return std::nullopt;
}

bool PhotoCatalogue::needsRebuild() {
    const auto database = _connections->reader();
    return database && database->query("SELECT value FROM state WHERE name = 'rebuild'").step();
}

void PhotoCatalogue::finishRebuild() {
    const auto database = _connections->writer();
    CatalogueTransaction transaction(shared_from_this(), database);
    database->execute("DELETE FROM state WHERE name = 'rebuild'");
    transaction.commit();
    if (database->hasFailed()) {
        errorLog(*database->error());
    }
}

void PhotoCatalogue::setByteSource(std::string_view kind, std::shared_ptr<AssetByteSource> source) {
    const std::scoped_lock lock(_sources->mutex);
    _sources->byKind.insert_or_assign(std::string(kind), std::move(source));
}

std::shared_ptr<AssetByteSource> PhotoCatalogue::byteSource(std::string_view kind) const {
    const std::scoped_lock lock(_sources->mutex);
    const auto found = _sources->byKind.find(kind);
    return found == _sources->byKind.end() ? nullptr : found->second;
}

} // namespace exifcard
