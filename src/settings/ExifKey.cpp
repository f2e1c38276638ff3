#include "settings/ExifKey.h"

namespace exifcard {
namespace {

constexpr std::string_view kClassName = "ExifKey";
constexpr std::string_view kKeyField = "exifKey";
constexpr std::string_view kIsHiddenField = "isHidden";

Value fieldOf(const ArchivedObject& coder, std::string_view name) {
    const auto field = coder.fields.find(name);
    return field != coder.fields.end() ? field->second : Value();
}

} // namespace

std::shared_ptr<ExifKey> ExifKey::initWithKey(std::string key, bool isHidden) {
    auto exifKey = std::make_shared<ExifKey>();
    exifKey->key = std::move(key);
    exifKey->isHidden = isHidden;
    return exifKey;
}

std::shared_ptr<ExifKey> ExifKey::exifWithKey(std::string key) {
    return initWithKey(std::move(key), false);
}

void ExifKey::encodeWithCoder(ArchivedObject& coder) const {
    coder.className = kClassName;
    coder.fields.insert_or_assign(std::string(kKeyField), key);
    coder.fields.insert_or_assign(std::string(kIsHiddenField), isHidden);
}

std::shared_ptr<ExifKey> ExifKey::initWithCoder(const ArchivedObject& coder) {
    if (coder.className != kClassName) {
        return nullptr;
    }
    auto exifKey = std::make_shared<ExifKey>();
    const Value key = fieldOf(coder, kKeyField);
    exifKey->key = key.text() != nullptr ? *key.text() : std::string();
    exifKey->isHidden = fieldOf(coder, kIsHiddenField);
    return exifKey;
}

} // namespace exifcard
