#include "platform/photos/CatalogueWatcher.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/FileWatcher.h"
#include "platform/foundation/OperationQueue.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/CatalogueTransaction.h"
#include "platform/photos/PHChange.h"
#include "platform/photos/PHPhotoLibrary.h"
#include "platform/photos/PhotoCatalogue.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace exifcard {
namespace {

/// The number of the last committed change; 0 without a catalogue.
std::int64_t lastChangeOf(PhotoCatalogue& catalogue) {
    const auto database = catalogue.connections().reader();
    return database ? lastChange(*database) : 0;
}

/// How long after a write someone looks again: the log is written first, and the commit becomes visible when
/// the disk has it, of which no file tells.
constexpr std::chrono::milliseconds kFirstWait(5);
constexpr std::chrono::milliseconds kLongestWait(5000);

template<class Object>
std::vector<std::shared_ptr<Object>> alive(std::vector<std::weak_ptr<Object>>& objects) {
    std::vector<std::shared_ptr<Object>> found;
    std::erase_if(objects, [&found](const std::weak_ptr<Object>& object) {
        auto held = object.lock();
        const bool isGone = held == nullptr;
        if (!isGone) {
            found.push_back(std::move(held));
        }
        return isGone;
    });
    return found;
}

} // namespace

struct CatalogueWatcher::State : std::enable_shared_from_this<State> {
    std::mutex mutex;
    std::weak_ptr<PhotoCatalogue> catalogue;                            // Guarded by mutex.
    std::vector<std::weak_ptr<PHPhotoLibraryChangeObserver>> observers; // Guarded by mutex.
    std::vector<std::weak_ptr<OpenSnapshot>> snapshots;                 // Guarded by mutex.
    std::unique_ptr<FileWatcher> files;                                 // Guarded by mutex.
    std::int64_t lastTold = 0;                                          // Used on `telling` alone.
    std::atomic<bool> isTellingDue = false; ///< A block that will look is on its way.
    OperationQueue telling{1};
    std::condition_variable stopped;
    bool isStopped = false; // Guarded by mutex.

    void finishSnapshots() {
        std::vector<std::shared_ptr<OpenSnapshot>> open;
        {
            const std::scoped_lock lock(mutex);
            open = alive(snapshots);
            snapshots.clear();
        }
        for (const auto& snapshot : open) {
            snapshot->finish();
        }
    }

    /// Many writes make one look.
    void scheduleTelling() {
        if (!isTellingDue.exchange(true)) {
            telling.addOperationWithBlock([state = shared_from_this()] {
                state->isTellingDue = false;
                state->tell();
            });
        }
    }

    /// Another program writes. Runs on the thread of `files`, where later writes wait meanwhile.
    void lookForCommits() {
        for (auto wait = kFirstWait; wait < kLongestWait; wait *= 2) {
            scheduleTelling();
            std::unique_lock lock(mutex);
            if (stopped.wait_for(lock, wait, [this] { return isStopped; })) {
                return;
            }
        }
    }

    void tell() {
        std::shared_ptr<PhotoCatalogue> held;
        std::vector<std::shared_ptr<PHPhotoLibraryChangeObserver>> hearing;
        {
            const std::scoped_lock lock(mutex);
            held = catalogue.lock();
            hearing = alive(observers);
        }
        const std::int64_t last = held ? lastChangeOf(*held) : 0;
        if (!held || std::exchange(lastTold, last) == last) {
            return;
        }
        finishSnapshots();
        const PHChange change(held);
        for (const auto& observer : hearing) {
            if (isObserving(observer)) {
                observer->photoLibraryDidChange(change);
            }
        }
    }

    /// Someone told before may have taken it off. Compares owners, so that no observer ends with the lock
    /// held.
    bool isObserving(const std::shared_ptr<PHPhotoLibraryChangeObserver>& observer) {
        const std::scoped_lock lock(mutex);
        return std::ranges::any_of(observers, [&observer](const auto& other) {
            return !other.owner_before(observer) && !observer.owner_before(other);
        });
    }
};

CatalogueWatcher::CatalogueWatcher() : _state(std::make_shared<State>()) {
}

CatalogueWatcher::~CatalogueWatcher() {
    std::unique_ptr<FileWatcher> files; // Ends without the lock, for it waits for its thread.
    const std::scoped_lock lock(_state->mutex);
    _state->isStopped = true;
    _state->stopped.notify_all();
    files = std::move(_state->files);
}

void CatalogueWatcher::noteChange() {
    _state->finishSnapshots();
    _state->scheduleTelling();
}

void CatalogueWatcher::addObserver(const std::shared_ptr<PhotoCatalogue>& catalogue,
    const std::shared_ptr<PHPhotoLibraryChangeObserver>& observer) {
    const std::scoped_lock lock(_state->mutex);
    _state->observers.push_back(observer);
    if (_state->files) {
        return;
    }
    _state->catalogue = catalogue;
    makeFolder(catalogue->folder());
    // Each commit is written into the log first.
    _state->files = FileWatcher::watch(catalogue->file() + "-wal", [weakState = std::weak_ptr(_state)] {
        if (const auto state = weakState.lock()) {
            state->lookForCommits();
        }
    });
    // What happens from here on is told.
    _state->telling.addOperationWithBlock([state = _state, now = lastChangeOf(*catalogue)] {
        state->lastTold = std::max(state->lastTold, now);
    });
}

void CatalogueWatcher::removeObserver(const PHPhotoLibraryChangeObserver& observer) {
    std::vector<std::shared_ptr<PHPhotoLibraryChangeObserver>> held; // Ends without the lock.
    const std::scoped_lock lock(_state->mutex);
    held = alive(_state->observers);
    const auto found =
        std::ranges::find(held, &observer, &std::shared_ptr<PHPhotoLibraryChangeObserver>::get);
    if (found != held.end()) {
        _state->observers.erase(_state->observers.begin() + (found - held.begin()));
    }
}

void CatalogueWatcher::addSnapshot(const std::weak_ptr<OpenSnapshot>& snapshot) {
    std::vector<std::shared_ptr<OpenSnapshot>> held; // Ends without the lock.
    const std::scoped_lock lock(_state->mutex);
    held = alive(_state->snapshots);
    _state->snapshots.push_back(snapshot);
}

} // namespace exifcard
