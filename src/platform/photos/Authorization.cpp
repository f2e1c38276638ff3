#include "platform/photos/Authorization.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/photos/PHPhotoLibrary.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace exifcard {
namespace {

// In the program's own defaults, where both programs see it.
constexpr std::string_view kStatusKey = "PhotoLibraryAuthorizationStatus";
constexpr std::string_view kFoldersKey = "PhotoLibraryAllowedFolders";

std::atomic<bool> isGrantedForThisProcess = false;

struct Question {
    std::mutex mutex;
    std::function<PHAuthorizationStatus()> ask; // Guarded by mutex.
};

Question& question() {
    static auto* const question = new Question;
    return *question;
}

PHAuthorizationStatus askedStatus() {
    std::function<PHAuthorizationStatus()> ask;
    {
        const std::scoped_lock lock(question().mutex);
        ask = question().ask;
    }
    return ask ? ask() : PHAuthorizationStatus::Authorized;
}

/// What the user decided, whatever this process was granted.
PHAuthorizationStatus storedStatus() {
    const Value stored = UserDefaults::standardUserDefaults()->objectForKey(kStatusKey);
    const std::int64_t status = stored.isNumber() ? stored.integerValue() : 0;
    const bool isKnown = status >= 0 && status <= static_cast<std::int64_t>(PHAuthorizationStatus::Limited);
    // What nobody can have decided is no permission.
    return isKnown ? static_cast<PHAuthorizationStatus>(status) : PHAuthorizationStatus::Restricted;
}

} // namespace

bool isLibraryReadable() {
    const auto status = PHPhotoLibrary::authorizationStatus();
    return status == PHAuthorizationStatus::Authorized || status == PHAuthorizationStatus::Limited;
}

std::optional<std::vector<std::string>> allowedFolders() {
    return isGrantedForThisProcess ? std::nullopt : PHPhotoLibrary::limitedFolders();
}

std::optional<std::vector<std::string>> PHPhotoLibrary::limitedFolders() {
    if (storedStatus() != PHAuthorizationStatus::Limited) {
        return std::nullopt;
    }
    std::vector<std::string> folders;
    if (const auto stored = UserDefaults::standardUserDefaults()->objectForKey(kFoldersKey).array()) {
        for (const Value& folder : *stored) {
            folders.push_back(folder.text() != nullptr ? *folder.text() : std::string());
        }
    }
    std::erase(folders, "");
    return folders;
}

PHAuthorizationStatus PHPhotoLibrary::authorizationStatus() {
    return isGrantedForThisProcess ? PHAuthorizationStatus::Authorized : storedStatus();
}

void PHPhotoLibrary::requestAuthorization(std::function<void(PHAuthorizationStatus)> handler) {
    DispatchQueue::globalQueue().async([handler = std::move(handler)] {
        if (authorizationStatus() == PHAuthorizationStatus::NotDetermined) {
            const PHAuthorizationStatus answer = askedStatus();
            const bool isStored = authorizationStatus() != PHAuthorizationStatus::NotDetermined;
            if (!isStored && answer != PHAuthorizationStatus::NotDetermined) {
                setAuthorization(answer);
            }
        }
        handler(authorizationStatus());
    });
}

void PHPhotoLibrary::setAuthorizationQuestion(std::function<PHAuthorizationStatus()> ask) {
    const std::scoped_lock lock(question().mutex);
    question().ask = std::move(ask);
}

void PHPhotoLibrary::setAuthorization(
    PHAuthorizationStatus status, const std::vector<std::string>& limitedFolders) {
    const auto defaults = UserDefaults::standardUserDefaults();
    const auto folders = Array::make();
    for (const std::string& folder : limitedFolders) {
        folders->addObject(folder);
    }
    defaults->setObjectForKey(limitedFolders.empty() ? Value() : Value(folders), kFoldersKey);
    defaults->setObjectForKey(static_cast<std::int64_t>(status), kStatusKey);
}

void PHPhotoLibrary::allowFolder(const std::string& folder) {
    auto folders = limitedFolders();
    if (folders && std::ranges::find(*folders, folder) == folders->end()) {
        folders->push_back(folder);
        setAuthorization(PHAuthorizationStatus::Limited, *folders);
    }
}

void PHPhotoLibrary::grantForThisProcess() {
    if (!isGrantedForThisProcess.exchange(true)) {
        NotificationCenter::defaultCenter().postNotificationName(kUserDefaultsDidChangeNotification, nullptr);
    }
}

} // namespace exifcard
