#pragma once

#include <mutex>
#include <utility>

namespace exifcard {

/// A property that one queue writes while another reads it: each read answers a
/// whole value, the old or the new one. For what does not fit a `std::atomic`.
template<typename T>
class AtomicProperty {
public:
    T load() const {
        const std::lock_guard lock(_mutex);
        return _value;
    }

    void store(T value) {
        const std::lock_guard lock(_mutex);
        std::swap(_value, value); // The old value is dropped after the lock.
    }

private:
    mutable std::mutex _mutex;
    T _value = T(); // Guarded by _mutex.
};

} // namespace exifcard
