#pragma once

#include "platform/photos/PHError.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class PHChange;

enum class PHAuthorizationStatus : std::int64_t {
    NotDetermined = 0,
    Restricted = 1,
    Denied = 2,
    Authorized = 3,
    Limited = 4 ///< To some folders of the library.
};

/// Hears of changes. Held weakly by the library.
class PHPhotoLibraryChangeObserver {
public:
    PHPhotoLibraryChangeObserver() = default;
    virtual ~PHPhotoLibraryChangeObserver() = default;
    PHPhotoLibraryChangeObserver(const PHPhotoLibraryChangeObserver&) = delete;
    PHPhotoLibraryChangeObserver& operator=(const PHPhotoLibraryChangeObserver&) = delete;

    /// Called on a serial background queue, after this program or another one changed the library.
    virtual void photoLibraryDidChange(const PHChange& change) = 0;
};

/// The user's photo library: who may see it, changes to it, and who hears of them. Thread-safe.
class PHPhotoLibrary {
public:
    static PHPhotoLibrary& sharedPhotoLibrary();

    /// The stored decision. Of one that was never made: not determined.
    static PHAuthorizationStatus authorizationStatus();
    /// Answers the stored decision, or asks for one first; on a queue of the library.
    static void requestAuthorization(std::function<void(PHAuthorizationStatus)> handler);
    /// How the user is asked: any thread, may block. Without one, who is asked allows everything: whoever
    /// runs a program on the own files has decided. A question may store the decision itself, with the
    /// folders of a limited one; then its answer is not stored. Nor is one that decides nothing.
    static void setAuthorizationQuestion(std::function<PHAuthorizationStatus()> question);
    /// Stores a decision of the user.
    /// @param limitedFolders  Of `Limited`: absolute paths; what lies below them is all that there is.
    static void setAuthorization(
        PHAuthorizationStatus status, const std::vector<std::string>& limitedFolders = {});
    /// The folders of a stored limited decision, in the order in which they were allowed; nothing where
    /// another one is stored.
    static std::optional<std::vector<std::string>> limitedFolders();
    /// Adds a folder to those of a stored limited decision; does nothing where another one is stored.
    /// @param folder  An absolute path.
    static void allowFolder(const std::string& folder);
    /// For a program whose start is the decision, such as the command line: authorized, whatever is stored.
    /// Told as a change of the user defaults, where a decision is stored.
    static void grantForThisProcess();

    using CompletionHandler = std::function<void(bool success, const std::optional<PHError>& error)>;
    /// Runs `changeBlock`, in which change requests are made, on a serial queue; then all its changes happen
    /// or none. The completion, which may be empty, comes on another queue when the change is in the library.
    void performChanges(std::function<void()> changeBlock, CompletionHandler completionHandler);
    /// The same, blocking; never on the main queue or within a change block.
    std::optional<PHError> performChangesAndWait(const std::function<void()>& changeBlock);

    /// From the first observer on, changes of other programs are watched too.
    void registerChangeObserver(const std::shared_ptr<PHPhotoLibraryChangeObserver>& observer);
    /// Afterwards the observer is not called again, but for a call that runs at that moment.
    void unregisterChangeObserver(const PHPhotoLibraryChangeObserver& observer);

private:
    PHPhotoLibrary() = default;
};

} // namespace exifcard
