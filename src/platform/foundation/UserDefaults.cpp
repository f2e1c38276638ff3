#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/DefaultsFile.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/FileWatcher.h"
#include "platform/foundation/Identifiers.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCenter.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>

namespace exifcard {
namespace {

/// The value with nothing shared: who changes a container that was stored or
/// answered changes no store.
// NOLINTNEXTLINE(misc-no-recursion): property lists are nested only so deep.
Value deepCopy(const Value& value) {
    if (const auto* array = value.arrayView()) {
        auto copy = Array::make();
        for (const Value& element : *array) {
            copy->addObject(deepCopy(element));
        }
        return copy;
    }
    if (const auto* dictionary = value.dictionaryView()) {
        auto copy = Dictionary::make();
        for (const auto& [key, element] : *dictionary) {
            copy->setObjectForKey(deepCopy(element), key);
        }
        return copy;
    }
    return value;
}

} // namespace

class UserDefaults::Implementation {
public:
    explicit Implementation(std::string path) : _file(std::move(path)), _snapshot(_file.read()) {
        tellUnreadable();
    }

    const std::string& path() const { return _file.path(); }

    Value value(std::string_view key) const {
        const std::lock_guard lock(_mutex);
        return deepCopy(storedValue(key));
    }

    std::vector<std::string> keys() const {
        const std::lock_guard lock(_mutex);
        const auto values = _snapshot->values->mutableCopy();
        for (const auto& [key, value] : _unsaved) {
            values->setObjectForKey(value, key);
        }
        std::vector<std::string> keys;
        std::ranges::transform(*values, std::back_inserter(keys), &Dictionary::Entry::first);
        return keys;
    }

    /// Answers whether anything changed, here or by another program meanwhile.
    bool store(const Value& value, std::string_view key) {
        const std::lock_guard fileLock(_fileMutex);
        const bool isRefreshed = refreshLocked();
        if (storedValue(key) == value) {
            return isRefreshed;
        }
        if (!propertylist::withChanges(_snapshot->bytes, {{std::string(key), value}})) {
            errorLog(std::string(key) + " is too long to be stored in " + path());
            return isRefreshed;
        }
        {
            const std::lock_guard lock(_mutex);
            std::erase_if(_unsaved, [key](const auto& change) { return change.first == key; });
            _unsaved.emplace_back(key, deepCopy(value));
        }
        save();
        return true;
    }

    /// Answers whether another program changed anything meanwhile.
    bool refresh() {
        const std::lock_guard fileLock(_fileMutex);
        return refreshLocked();
    }

    bool isSaved() const {
        const std::lock_guard lock(_mutex);
        return _unsaved.empty();
    }

    void watch(const std::function<void()>& handler) {
        const std::lock_guard fileLock(_fileMutex);
        if (_watcher || !makeFolder(std::filesystem::path(path()).parent_path())) {
            return;
        }
        _watcher = FileWatcher::watch(path(), handler);
    }

private:
    /// Under either mutex: the two members change only under both.
    const Value& storedValue(std::string_view key) const {
        const auto unsaved =
            std::ranges::find_if(_unsaved, [key](const auto& change) { return change.first == key; });
        return unsaved != _unsaved.end() ? unsaved->second : _snapshot->values->objectForKey(key);
    }

    bool refreshLocked() {
        if (_file.identity() == _snapshot->identity) {
            return false;
        }
        return adopt(_file.read());
    }

    void save() {
        if (auto snapshot = _file.change(_unsaved)) {
            adopt(std::move(snapshot));
            const std::lock_guard lock(_mutex);
            _unsaved.clear();
            return;
        }
        if (!_isTroubleTold) {
            errorLog(path() + " cannot be written; changes of settings last until the program ends");
        }
        _isTroubleTold = true;
    }

    /// Answers whether any value differs.
    bool adopt(DefaultsFile::SnapshotPtr snapshot) {
        const bool isChanged = !(*snapshot->values == *_snapshot->values);
        const bool isNews = snapshot->isUnreadable && !(snapshot->identity == _snapshot->identity);
        {
            const std::lock_guard lock(_mutex);
            _snapshot = std::move(snapshot);
        }
        if (isNews) {
            tellUnreadable();
        }
        return isChanged;
    }

    void tellUnreadable() const {
        if (_snapshot->isUnreadable) {
            errorLog(path() + " is no property list; its settings are not used");
        }
    }

    const DefaultsFile _file;
    std::mutex _fileMutex; // Held while the file is read or written; getters never wait for it.
    mutable std::mutex _mutex;
    DefaultsFile::SnapshotPtr _snapshot;        // Changed under both mutexes, read under either.
    std::vector<propertylist::Change> _unsaved; // What is not written yet; as _snapshot.
    bool _isTroubleTold = false;                // Guarded by _fileMutex.
    std::unique_ptr<FileWatcher> _watcher;      // Guarded by _fileMutex.
};

UserDefaults::UserDefaults(std::unique_ptr<Implementation> implementation)
    : _implementation(std::move(implementation)) {
}

UserDefaults::~UserDefaults() = default;

std::shared_ptr<UserDefaults> UserDefaults::standardUserDefaults() {
    return initWithSuiteName(kApplicationIdentifier);
}

std::shared_ptr<UserDefaults> UserDefaults::initWithSuiteName(std::string_view name) {
    static auto& mutex = *new std::mutex();
    static auto& opened = *new std::map<std::string, std::weak_ptr<UserDefaults>>(); // Guarded by mutex.
    const auto fileName = std::string(name.empty() ? kApplicationIdentifier : name) + ".plist";
    const auto path = configurationFolder() + '/' + fileName;
    const std::lock_guard lock(mutex);
    auto defaults = opened[path].lock();
    if (!defaults) {
        defaults.reset(new UserDefaults(std::make_unique<Implementation>(path)));
        opened[path] = defaults;
    }
    return defaults;
}

Value UserDefaults::objectForKey(std::string_view key) const {
    return _implementation->value(key);
}

void UserDefaults::setObjectForKey(const Value& value, std::string_view key) {
    if (_implementation->store(value, key)) {
        tellChange();
    }
}

void UserDefaults::removeObjectForKey(std::string_view key) {
    setObjectForKey({}, key);
}

std::vector<std::string> UserDefaults::allKeys() const {
    return _implementation->keys();
}

bool UserDefaults::synchronize() {
    if (_implementation->refresh()) {
        tellChange();
    }
    return _implementation->isSaved();
}

const std::string& UserDefaults::path() const {
    return _implementation->path();
}

void UserDefaults::watchForOutsideChanges() {
    _implementation->watch([weakDefaults = weak_from_this()] {
        if (const auto defaults = weakDefaults.lock()) {
            defaults->synchronize();
        }
    });
}

void UserDefaults::tellChange() {
    NotificationCenter::defaultCenter().postNotificationName(kUserDefaultsDidChangeNotification, this);
}

} // namespace exifcard
