#pragma once

#include <atomic>
#include <memory>
#include <mutex>

namespace exifcard {

/// Makes the one object of a class on first use, from whichever thread.
template<typename Class>
class SharedInstance {
public:
    Class& get() {
        if (Class* const instance = _instance.load(std::memory_order_acquire)) {
            return *instance;
        }
        const std::lock_guard lock(_mutex);
        if (!_owner) {
            _owner = std::make_unique<Class>();
            _instance.store(_owner.get(), std::memory_order_release);
        }
        return *_owner;
    }

    /// Drops the object; nobody may use it any more.
    void forget() {
        const std::lock_guard lock(_mutex);
        _instance.store(nullptr, std::memory_order_release);
        _owner.reset();
    }

private:
    std::atomic<Class*> _instance = nullptr;
    std::mutex _mutex;
    std::unique_ptr<Class> _owner; // Guarded by _mutex.
};

} // namespace exifcard
