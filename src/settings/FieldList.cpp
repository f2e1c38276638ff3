#include "settings/FieldList.h"

#include "platform/foundation/FormatString.h"
#include "platform/foundation/Identifiers.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/UserDefaults.h"

#include <algorithm>
#include <atomic>
#include <iterator>

namespace exifcard {
namespace {

std::atomic<bool (*)(std::string_view key)> fieldTest = nullptr;

bool isField(std::string_view key) {
    auto* const test = fieldTest.load(std::memory_order_relaxed);
    return test == nullptr || test(key);
}

bool isShown(const std::shared_ptr<ExifKey>& key) {
    return key && !key->isHidden.boolValue();
}

void logForeignKeys(const ExifKeys& keys) {
    const auto count =
        std::ranges::count_if(keys, [](const auto& key) { return isShown(key) && !isField(key->key); });
    if (count > 0) {
        errorLog(
            stringWithFormat("a stored list of fields names %ld that are none; they are left out", {count}));
    }
}

Data archivedKeys(const ExifKeys& keys) {
    std::vector<ArchivedObject> objects;
    objects.reserve(keys.size());
    for (const auto& key : keys) {
        ArchivedObject& object = objects.emplace_back();
        if (key) {
            key->encodeWithCoder(object);
        } else {
            object.className = "NSNull"; // An array of the platform's holds no nothing.
        }
    }
    return keyedarchive::archivedDataWithRootArray(objects);
}

std::shared_ptr<const ExifKeys> visibleSubset(const ExifKeys& keys) {
    auto visible = std::make_shared<ExifKeys>();
    std::ranges::copy_if(keys, std::back_inserter(*visible),
        [](const auto& key) { return isShown(key) && isField(key->key); });
    return visible;
}

} // namespace

void setFieldTest(bool (*isField)(std::string_view key)) {
    fieldTest.store(isField, std::memory_order_relaxed);
}

ExifKeys visibleKeysNamed(std::span<const char* const> keys) {
    ExifKeys list;
    std::ranges::transform(keys, std::back_inserter(list), &ExifKey::exifWithKey);
    return list;
}

ExifKeys missingKeys(const ExifKeys& stored, const ExifKeys& defaults) {
    std::string joined;
    for (const auto& key : stored) {
        joined += key ? key->key + ',' : std::string();
    }
    ExifKeys missing;
    // Intended: a key that is part of a longer stored one counts as present ("GPS" in "GPSSpeed").
    std::ranges::copy_if(defaults, std::back_inserter(missing),
        [&joined](const auto& key) { return !key || joined.find(key->key) == std::string::npos; });
    return missing;
}

std::optional<ExifKeys> unarchivedKeys(const Value& stored) {
    const auto archive = stored.data();
    if (!archive) {
        return std::nullopt;
    }
    ExifKeys keys;
    try {
        std::ranges::transform(
            keyedarchive::unarchiveRootArray(*archive), std::back_inserter(keys), &ExifKey::initWithCoder);
    } catch (const PlatformException& exception) {
        errorLog(std::string("a stored list of fields cannot be read: ") + exception.what());
    }
    logForeignKeys(keys);
    return keys;
}

std::shared_ptr<const ExifKeys> FieldList::keys() const {
    const std::lock_guard lock(_mutex);
    return _keys;
}

std::shared_ptr<const ExifKeys> FieldList::visibleKeys() const {
    const std::lock_guard lock(_mutex);
    if (!_visibleKeys || _visibleKeys->empty()) {
        _visibleKeys = visibleSubset(*_keys);
    }
    return _visibleKeys;
}

bool FieldList::load(const UserDefaults& suite) {
    auto keys = unarchivedKeys(suite.objectForKey(_key));
    if (!keys) {
        return false;
    }
    if (keys->empty()) {
        store(std::move(*keys));
    } else {
        take(std::move(*keys)); // The suite holds it; to archive it for comparison is a tenth of a start.
    }
    return true;
}

void FieldList::store(ExifKeys keys) {
    const Data archive = archivedKeys(keys);
    take(std::move(keys));
    const auto suite = UserDefaults::initWithSuiteName(kApplicationGroup);
    suite->setObjectForKey(archive, _key);
    suite->synchronize();
}

void FieldList::appendMissing(const ExifKeys& defaults) {
    const auto stored = keys();
    if (stored->size() < defaults.size()) {
        ExifKeys merged = *stored;
        std::ranges::move(missingKeys(*stored, defaults), std::back_inserter(merged));
        store(std::move(merged));
    }
}

void FieldList::reload() {
    const auto suite = UserDefaults::initWithSuiteName(kApplicationGroup);
    suite->synchronize();
    if (auto keys = unarchivedKeys(suite->objectForKey(_key))) {
        take(std::move(*keys));
    }
}

void FieldList::take(ExifKeys keys) {
    auto taken = std::make_shared<const ExifKeys>(std::move(keys));
    auto visible = visibleSubset(*taken);
    const std::lock_guard lock(_mutex);
    _keys = std::move(taken);
    _visibleKeys = std::move(visible);
}

} // namespace exifcard
