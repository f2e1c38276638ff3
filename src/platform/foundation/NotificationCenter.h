#pragma once

#include <functional>
#include <map>
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
///
/// Adding and dropping an observer costs the same however many there are: every
/// record of a library may hold one.
class NotificationCenter {
    struct Observer;

public:
    using Handler = std::function<void(const Notification&)>;

    /// Ends the observation when it is dropped. Afterwards the handler is not
    /// started again; one that runs at that moment on another thread ends by itself.
    /// May not outlive its centre; the default centre is never destroyed.
    class Observation {
    public:
        /// Observes nothing.
        Observation() = default;
        ~Observation();
        Observation(Observation&& other) noexcept = default;
        Observation& operator=(Observation&& other) noexcept;
        Observation(const Observation&) = delete;
        Observation& operator=(const Observation&) = delete;

    private:
        friend class NotificationCenter;
        Observation(NotificationCenter* center, std::shared_ptr<Observer> observer);

        NotificationCenter* _center = nullptr;
        std::shared_ptr<Observer> _observer;
    };

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    static NotificationCenter& defaultCenter();

    /// @param object  Only notifications of this sender are told; null matches every sender.
    [[nodiscard]] Observation addObserver(std::string_view name, const void* object, Handler handler);
    void postNotificationName(std::string_view name, const void* object);

private:
    /// The observers of one name, in no order.
    using Topic = std::vector<std::shared_ptr<Observer>>;

    std::vector<std::shared_ptr<Observer>> matchingObservers(std::string_view name, const void* object);
    void removeObserver(Observer& observer);

    std::mutex _mutex;
    std::map<std::string, Topic, std::less<>> _topics; // Guarded by _mutex. A name, once there, stays.
};

} // namespace exifcard
