#include "platform/foundation/NotificationCenter.h"

#include <atomic>
#include <cstddef>
#include <utility>

namespace exifcard {

struct NotificationCenter::Observer {
    Observer(const void* sender, Handler observingHandler)
        : object(sender)
        , handler(std::move(observingHandler)) {}

    const void* const object;
    const Handler handler;
    std::atomic<bool> isObserving = true; // A post under way looks here before each call.
    Topic* topic = nullptr;
    std::size_t place = 0; // In the topic; guarded by the centre's mutex.
};

NotificationCenter::Observation::Observation(NotificationCenter* center, std::shared_ptr<Observer> observer)
    : _center(center)
    , _observer(std::move(observer)) {
}

NotificationCenter::Observation::~Observation() {
    if (_observer) {
        _center->removeObserver(*_observer);
    }
}

NotificationCenter::Observation& NotificationCenter::Observation::operator=(Observation&& other) noexcept {
    std::swap(_center, other._center);
    std::swap(_observer, other._observer);
    const auto replaced = std::move(other); // Ends what this one observed before.
    return *this;
}

NotificationCenter::NotificationCenter() = default;

NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::defaultCenter() {
    // Never destroyed: observations in static objects may end after it would have.
    static auto& center = *new NotificationCenter();
    return center;
}

NotificationCenter::Observation NotificationCenter::addObserver(
    std::string_view name, const void* object, Handler handler) {
    auto observer = std::make_shared<Observer>(object, std::move(handler));
    const std::lock_guard lock(_mutex);
    auto found = _topics.find(name);
    if (found == _topics.end()) {
        found = _topics.emplace(name, Topic()).first;
    }
    observer->topic = &found->second;
    observer->place = found->second.size();
    found->second.push_back(observer);
    return {this, std::move(observer)};
}

void NotificationCenter::removeObserver(Observer& observer) {
    observer.isObserving.store(false, std::memory_order_release);
    const std::lock_guard lock(_mutex);
    Topic& topic = *observer.topic;
    topic.back()->place = observer.place;
    std::swap(topic[observer.place], topic.back());
    topic.pop_back();
}

std::vector<std::shared_ptr<NotificationCenter::Observer>> NotificationCenter::matchingObservers(
    std::string_view name, const void* object) {
    std::vector<std::shared_ptr<Observer>> matching;
    const std::lock_guard lock(_mutex);
    const auto found = _topics.find(name);
    if (found == _topics.end()) {
        return matching;
    }
    for (const auto& observer : found->second) {
        if (observer->object == nullptr || observer->object == object) {
            matching.push_back(observer);
        }
    }
    return matching;
}

void NotificationCenter::postNotificationName(std::string_view name, const void* object) {
    // A copy: a handler may add and drop observers, itself included.
    const auto observers = matchingObservers(name, object);
    const Notification notification = {std::string(name), object};
    for (const auto& observer : observers) {
        if (observer->isObserving.load(std::memory_order_acquire)) {
            observer->handler(notification);
        }
    }
}

} // namespace exifcard
