#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

struct Notification {
    std::string name;
    const void* object = nullptr; ///< Who sent it; may be null.
};

/// Tells observers of named events. A post calls every matching observer on the
/// posting thread before it returns, in no promised order; no lock is held meanwhile.
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    /// Ends the observation when it is dropped. Afterwards the handler is not
    /// started again; one that runs at that moment on another thread ends by itself.
    class Observation {
    public:
        Observation() = default;
        Observation(NotificationCenter* center, std::uint64_t identifier);
        ~Observation();
        Observation(Observation&& other) noexcept;
        Observation& operator=(Observation&& other) noexcept;
        Observation(const Observation&) = delete;
        Observation& operator=(const Observation&) = delete;

    private:
        NotificationCenter* _center = nullptr;
        std::uint64_t _identifier = 0;
    };

    static NotificationCenter& defaultCenter();

    /// @param object  Only notifications of this sender are told; null matches every sender.
    [[nodiscard]] Observation addObserver(std::string_view name, const void* object, Handler handler);
    void postNotificationName(std::string_view name, const void* object);

private:
    struct Observer {
        std::uint64_t identifier = 0;
        std::string name;
        const void* object = nullptr;
        std::shared_ptr<const Handler> handler;
    };

    void removeObserver(std::uint64_t identifier);

    std::mutex _mutex;
    std::vector<Observer> _observers;  // Guarded by _mutex; ascending by identifier.
    std::uint64_t _nextIdentifier = 1; // Guarded by _mutex.
};

} // namespace exifcard
