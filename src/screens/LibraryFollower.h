#pragma once

#include "platform/foundation/NotificationCenter.h"
#include "platform/photos/PHChange.h"
#include "platform/photos/PHPhotoLibrary.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class ExifDataListViewController;
enum class EmptyListReason;
struct RecordsOfChange;

/// Whether photos may be read: all of them, or those that the user chose.
bool isReadable(PHAuthorizationStatus status);

/// Keeps a list screen in step with the photo library, with its order, and with what the user decides about
/// access to it.
///
/// Main queue; changes are looked at and their records built on another. A change is taken in while nothing
/// else is: what comes during a page waits for its end.
class LibraryFollower : public std::enable_shared_from_this<LibraryFollower> {
public:
    explicit LibraryFollower(std::weak_ptr<ExifDataListViewController> screen);
    ~LibraryFollower();
    LibraryFollower(const LibraryFollower&) = delete;
    LibraryFollower& operator=(const LibraryFollower&) = delete;

    /// Asks for access where nobody has decided, and observes the library where it may be read.
    void start();
    void stop();
    void libraryDidChange(const PHChange& change);
    /// Takes in what came meanwhile, at most once a second.
    void takeWaitingChange();
    /// While the screen is out of sight, changes wait. One that was never seen follows all the same.
    void pause() { _isPaused = true; }
    void resume();
    /// Why the list shows no photo; nothing while it does, or may yet.
    std::optional<EmptyListReason> reasonForEmptyList() const;

private:
    class Observer;
    using Clock = std::chrono::steady_clock;

    void noteAuthorization();
    void noteAnswer();
    void observeLibrary();
    void changeArrived(const PHChange& change, const RecordsOfChange& records);
    bool waitsForNextReload();

    std::weak_ptr<ExifDataListViewController> _screen;
    std::shared_ptr<Observer> _observer;
    NotificationCenter::Observation _defaultsObservation;
    NotificationCenter::Observation _sortingObservation;
    PHAuthorizationStatus _status = PHAuthorizationStatus::NotDetermined;
    std::optional<std::vector<std::string>> _limitedFolders; ///< Of a limited status.
    std::optional<PHChange> _waitingChange;
    bool _isAsking = false; ///< For access.
    bool _isComparing = false;
    bool _isPaused = false;
    bool _isReloadDue = false; ///< A timer takes what waits.
    std::optional<Clock::time_point> _lastReload;
};

} // namespace exifcard
