#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/PropertyListBounds.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <unordered_map>

namespace exifcard::keyedarchive {
namespace {

/// Elements and fields in all: ten times the longest list. An element may be
/// referred to any number of times, so a small archive can ask for many.
constexpr std::size_t kMostParts = 4000;
constexpr std::size_t kMostTextBytes = 1U << 20U;
/// An object of many fields is searched for each of them; a list's has three.
constexpr std::size_t kMostFields = 256;

[[noreturn]] void refuse(const std::string& reason) {
    throw PlatformException("NSInvalidArgumentException", "the keyed archive " + reason);
}

class Unarchiver {
public:
    explicit Unarchiver(std::string_view bytes) : _list(bytes) {
        // In XML form the references come out as dictionaries.
        const auto root = propertylist::isBinary(bytes) ? _list.objectAt(_list.root()) : std::nullopt;
        _objects = entry(root, "$objects");
        _top = entry(root, "$top");
        if (!_objects || textOf(entry(root, "$archiver")) != "NSKeyedArchiver") {
            refuse("is none");
        }
    }

    std::vector<ArchivedObject> rootArray() {
        const auto root = resolved(entry(_top, "root"));
        const auto& classes = classesOf(root);
        if (std::ranges::count(classes, "NSArray") == 0) {
            refuse("holds no array");
        }
        std::vector<ArchivedObject> elements;
        const auto list = entry(root, "NS.objects");
        for (std::size_t place = 0; list && list->kind == Kind::Array && place < list->size; ++place) {
            elements.push_back(elementOf(resolved(element(*list, place))));
        }
        return elements;
    }

private:
    using Kind = propertylist::BinaryPropertyList::Kind;
    using Object = std::optional<propertylist::BinaryPropertyList::Object>;

    Object element(const Object& container, std::size_t place) const {
        const auto index = _list.elementAt(*container, place);
        return index ? _list.objectAt(*index) : std::nullopt;
    }

    /// What stands under `key` in a dictionary; nothing in any other object.
    Object entry(const Object& dictionary, std::string_view key) {
        if (!dictionary || dictionary->kind != Kind::Dictionary) {
            return std::nullopt;
        }
        for (std::size_t place = 0; place < std::min(dictionary->size, kMostFields); ++place) {
            if (keyAt(*dictionary, place) == key) {
                return element(dictionary, place + dictionary->size);
            }
        }
        return std::nullopt;
    }

    /// The key at a place of a dictionary; empty for what is no text. All elements refer to the same few
    /// keys.
    const std::string& keyAt(const propertylist::BinaryPropertyList::Object& dictionary, std::size_t place) {
        const auto index = _list.elementAt(dictionary, place);
        const auto [found, isNew] = _keys.try_emplace(index.value_or(_list.count()));
        if (isNew && index) {
            found->second = textOf(_list.objectAt(*index));
        }
        return found->second;
    }

    /// The object that a reference means, or the object itself when it is no
    /// reference. Nothing for the reference to nothing.
    Object resolved(const Object& object) const {
        const auto index = object ? _list.referenceIn(*object) : std::nullopt;
        if (!index) {
            return object;
        }
        if (_objects->kind != Kind::Array || *index >= _objects->size) {
            refuse("refers to an object beyond its end");
        }
        return *index > 0 ? element(_objects, *index) : std::nullopt;
    }

    std::string textOf(const Object& object) const {
        const Value value = object && object->isText() ? _list.scalarOf(*object) : Value();
        return value.text() != nullptr ? *value.text() : std::string();
    }

    /// The name of the object's class and of those it is made from; empty for what is no object.
    const std::vector<std::string>& classesOf(const Object& object) {
        const auto record = resolved(entry(object, "$class"));
        const auto [found, isNew] = _classes.try_emplace(record ? record->content : 0);
        if (isNew) {
            found->second = namesInRecord(record);
        }
        return found->second;
    }

    std::vector<std::string> namesInRecord(const Object& record) {
        std::vector<std::string> names = {textOf(entry(record, "$classname"))};
        const auto chain = entry(record, "$classes");
        for (std::size_t place = 0; chain && chain->kind == Kind::Array && place < chain->size; ++place) {
            names.push_back(textOf(element(chain, place)));
            spend(0, 1 + names.back().size());
        }
        return names;
    }

    ArchivedObject elementOf(const Object& object) {
        spend(1, 0);
        ArchivedObject archived;
        const auto& classes = classesOf(object);
        if (classes.front().empty() || std::ranges::count(classes, "NSString") > 0) {
            archived.fields.emplace("", valueOf(object));
            return archived;
        }
        archived.className = classes.front();
        for (std::size_t place = 0; place < object->size; ++place) {
            const std::string& key = keyAt(*object, place);
            const bool isEscaped = key.starts_with("$$");
            if (isEscaped || !key.starts_with('$')) {
                const auto field = resolved(element(object, place + object->size));
                archived.fields.emplace(key.substr(isEscaped ? 1 : 0), valueOf(field));
            }
            spend(1, key.size());
        }
        return archived;
    }

    /// The text, number or boolean; nothing for any other object.
    Value valueOf(const Object& object) {
        const auto inlined =
            object && object->kind == Kind::Dictionary ? resolved(entry(object, "NS.string")) : object;
        if (!inlined) {
            return {};
        }
        spend(0, _list.contentOf(*inlined).size());
        return _list.scalarOf(*inlined);
    }

    void spend(std::size_t parts, std::size_t textBytes) {
        _parts += parts;
        _textBytes += textBytes;
        if (_parts > kMostParts || _textBytes > kMostTextBytes) {
            refuse("holds too much");
        }
    }

    propertylist::BinaryPropertyList _list;
    std::unordered_map<std::size_t, std::string> _keys; ///< By their objects' numbers.
    Object _objects;
    Object _top;
    std::map<std::size_t, std::vector<std::string>>
        _classes; ///< By where their record stands; most objects share one.
    std::size_t _parts = 0;
    std::size_t _textBytes = 0;
};

} // namespace

std::vector<ArchivedObject> unarchiveRootArray(const Data& archive) {
    return Unarchiver(archive.text()).rootArray();
}

} // namespace exifcard::keyedarchive
