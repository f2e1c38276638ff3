#include "screens/LibraryFollower.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/UserDefaults.h"
#include "screens/EmptyStateView.h"
#include "screens/ExifDataListDataSource.h"
#include "screens/ExifDataListViewController.h"
#include "screens/RecordsOfChange.h"
#include "settings/PersistanceManager.h"
#include "settings/SettingsNotifications.h"

#include <QTimer>

#include <utility>

namespace exifcard {
namespace {

constexpr std::chrono::milliseconds kBetweenReloads{1000};

} // namespace

bool isReadable(PHAuthorizationStatus status) {
    return status == PHAuthorizationStatus::Authorized || status == PHAuthorizationStatus::Limited;
}

/// What the library knows of a follower, so that no queue of it ever holds a screen.
class LibraryFollower::Observer : public PHPhotoLibraryChangeObserver {
public:
    explicit Observer(std::weak_ptr<ExifDataListViewController> screen) : _screen(std::move(screen)) {}

    void photoLibraryDidChange(const PHChange& change) override {
        DispatchQueue::mainQueue().async([screen = _screen, change] {
            if (const auto list = screen.lock()) {
                list->photoLibraryDidChange(change);
            }
        });
    }

private:
    const std::weak_ptr<ExifDataListViewController> _screen;
};

LibraryFollower::LibraryFollower(std::weak_ptr<ExifDataListViewController> screen)
    : _screen(std::move(screen)) {
}

LibraryFollower::~LibraryFollower() = default;

void LibraryFollower::start() {
    const auto noteLater = [weak = weak_from_this()](const Notification&) {
        DispatchQueue::mainQueue().async([weak] {
            if (const auto self = weak.lock()) {
                self->noteAuthorization();
            }
        });
    };
    _defaultsObservation = NotificationCenter::defaultCenter().addObserver(
        kUserDefaultsDidChangeNotification, /*object=*/nullptr, noteLater);
    _sortingObservation = NotificationCenter::defaultCenter().addObserver(
        kListSortingChangedEvent, /*object=*/nullptr, [screen = _screen](const Notification&) {
            if (const auto list = screen.lock()) {
                list->refresh();
            }
        });
    _status = PHPhotoLibrary::authorizationStatus();
    _limitedFolders = PHPhotoLibrary::limitedFolders();
    if (_status == PHAuthorizationStatus::NotDetermined) {
        _isAsking = true;
        PHPhotoLibrary::requestAuthorization([weak = weak_from_this()](PHAuthorizationStatus) {
            DispatchQueue::mainQueue().async([weak] {
                if (const auto self = weak.lock()) {
                    self->noteAnswer();
                }
            });
        });
    } else if (isReadable(_status)) {
        observeLibrary();
    }
}

void LibraryFollower::stop() {
    if (_observer) {
        PHPhotoLibrary::sharedPhotoLibrary().unregisterChangeObserver(*_observer);
        _observer.reset();
    }
    _defaultsObservation = {};
    _sortingObservation = {};
}

void LibraryFollower::noteAuthorization() {
    const auto status = PHPhotoLibrary::authorizationStatus();
    const auto screen = _screen.lock();
    auto folders = PHPhotoLibrary::limitedFolders();
    if ((status == _status && folders == _limitedFolders) || !screen) {
        return;
    }
    _status = status;
    _limitedFolders = std::move(folders);
    if (isReadable(status)) {
        observeLibrary();
    }
    screen->refresh();
}

void LibraryFollower::noteAnswer() {
    _isAsking = false;
    noteAuthorization();
    if (const auto screen = _screen.lock()) {
        screen->updateEmptyState(); // The question may have been left open.
    }
}

void LibraryFollower::observeLibrary() {
    if (!_observer) {
        _observer = std::make_shared<Observer>(_screen);
        PHPhotoLibrary::sharedPhotoLibrary().registerChangeObserver(_observer);
    }
}

void LibraryFollower::libraryDidChange(const PHChange& change) {
    _waitingChange = change; // Each one tells all that happened since the fetch.
    takeWaitingChange();
}

void LibraryFollower::resume() {
    _isPaused = false;
    takeWaitingChange();
}

void LibraryFollower::takeWaitingChange() {
    const auto screen = _screen.lock();
    if (!screen || !_waitingChange || _isComparing || _isPaused || screen->dataSource->isLoading() ||
        waitsForNextReload()) {
        return;
    }
    _isComparing = true;
    DispatchQueue::globalQueue().async([weak = weak_from_this(),
                                           change = *std::exchange(_waitingChange, std::nullopt),
                                           listed = ListedAssets::ofDataSource(*screen->dataSource)] {
        DispatchQueue::mainQueue().async([weak, change, records = RecordsOfChange::compare(change, listed)] {
            if (const auto self = weak.lock()) {
                self->changeArrived(change, records);
            }
        });
    });
}

void LibraryFollower::changeArrived(const PHChange& change, const RecordsOfChange& records) {
    _isComparing = false;
    const auto screen = _screen.lock();
    if (!screen) {
        return;
    }
    if (!records.listed.isStillListed(*screen->dataSource)) {
        // The list became another one meanwhile. A newer change tells of this one too.
        _waitingChange = _waitingChange ? _waitingChange : change;
    } else if (records.needsReload) {
        _lastReload = Clock::now();
        screen->dataSource->replaceFetchResult(records.fetchResultAfterChanges);
    } else if (records.fetchResultAfterChanges) {
        if (records.apply(*screen->dataSource)) {
            _lastReload = Clock::now();
        }
        screen->followSelection();
    }
    takeWaitingChange();
}

/// An import tells of many changes; the list takes them in together, so that it can be used meanwhile.
bool LibraryFollower::waitsForNextReload() {
    const auto now = Clock::now();
    if (!_lastReload || now - *_lastReload >= kBetweenReloads) {
        return false;
    }
    if (std::exchange(_isReloadDue, true)) {
        return true;
    }
    const auto rest =
        std::chrono::duration_cast<std::chrono::milliseconds>(*_lastReload + kBetweenReloads - now);
    QTimer::singleShot(rest + std::chrono::milliseconds(1), _screen.lock().get(), [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->_isReloadDue = false;
            self->takeWaitingChange();
        }
    });
    return true;
}

std::optional<EmptyListReason> LibraryFollower::reasonForEmptyList() const {
    const auto screen = _screen.lock();
    if (!screen || screen->dataSource->isLoading() || screen->dataSource->hasMoreExifObjects ||
        !screen->dataSource->exifDataItemsArray.empty() || _isAsking) {
        return std::nullopt;
    }
    if (!isReadable(_status)) {
        return EmptyListReason::NoAccess;
    }
    const auto& settings = PersistanceManager::sharedInstance();
    const bool hidesSome = !screen->dataSource->unFilteredExifDataItemsArray.empty();
    // The location filter is a part of the query too, whose result is then empty.
    if (hidesSome || settings.locationFilter() != 0) {
        return EmptyListReason::Filter;
    }
    return screen->dataSource->assetCollection ? EmptyListReason::EmptyAlbum : EmptyListReason::NoPhotos;
}

} // namespace exifcard
