#pragma once

#include <memory>

namespace exifcard {

class PHPhotoLibraryChangeObserver;
class PhotoCatalogue;

/// A fetch result that is not yet filled and holds on to the catalogue as it was.
class OpenSnapshot {
public:
    OpenSnapshot() = default;
    virtual ~OpenSnapshot() = default;
    OpenSnapshot(const OpenSnapshot&) = delete;
    OpenSnapshot& operator=(const OpenSnapshot&) = delete;

    /// Reads the rest and lets go.
    virtual void finish() = 0;
};

/// Notices that the catalogue was changed, by this program or another one, and tells. Thread-safe.
class CatalogueWatcher {
public:
    CatalogueWatcher();
    ~CatalogueWatcher();
    CatalogueWatcher(const CatalogueWatcher&) = delete;
    CatalogueWatcher& operator=(const CatalogueWatcher&) = delete;

    /// This program committed a change. Finishes the open snapshots, so that the file's log does not grow for
    /// their sake, and lets observers be told.
    void noteChange();

    /// From the first one on, other programs are watched.
    void addObserver(const std::shared_ptr<PhotoCatalogue>& catalogue,
        const std::shared_ptr<PHPhotoLibraryChangeObserver>& observer);
    void removeObserver(const PHPhotoLibraryChangeObserver& observer);
    void addSnapshot(const std::weak_ptr<OpenSnapshot>& snapshot);

private:
    struct State;
    std::shared_ptr<State> _state; // Shared with the blocks that tell.
};

} // namespace exifcard
