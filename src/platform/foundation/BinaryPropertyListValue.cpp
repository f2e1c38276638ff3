#include "platform/foundation/BinaryPropertyListValue.h"

#include "platform/foundation/Array.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Dictionary.h"
#include "platform/foundation/PropertyListDate.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace exifcard::propertylist {
namespace {

class BinaryReader {
public:
    explicit BinaryReader(std::string_view bytes) : _list(bytes) {}

    std::optional<Value> root() const { return valueAt(_list.root()); }

private:
    using Kind = BinaryPropertyList::Kind;
    using Object = BinaryPropertyList::Object;

    // NOLINTNEXTLINE(misc-no-recursion): a list within the bounds is nested at most kMostNesting deep.
    std::optional<Value> valueAt(std::optional<std::size_t> index) const {
        const auto object = index ? _list.objectAt(*index) : std::nullopt;
        if (!object) {
            return std::nullopt;
        }
        switch (object->kind) {
        case Kind::Array:
            return arrayOf(*object);
        case Kind::Dictionary:
            return dictionaryOf(*object);
        case Kind::Reference:
            return referenceOf(*object);
        default:
            return scalarOf(*object);
        }
    }

    std::optional<Value> scalarOf(const Object& object) const {
        const bool isCutShort = object.size > 0 && _list.contentOf(object).empty();
        if ((object.isText() || object.kind == Kind::Data) && isCutShort) {
            return std::nullopt;
        }
        const Value value = _list.scalarOf(object);
        if (const auto date = value.date()) {
            return dateWithinRange(*date);
        }
        return value.isNothing() ? std::nullopt : std::optional(value);
    }

    /// A reference of a keyed archive, as its XML form shows it.
    std::optional<Value> referenceOf(const Object& object) const {
        const auto number = _list.referenceIn(object);
        return number
                   ? std::optional<Value>(Dictionary::make({{"CF$UID", static_cast<std::int64_t>(*number)}}))
                   : std::nullopt;
    }

    // NOLINTNEXTLINE(misc-no-recursion): as valueAt.
    std::optional<Value> arrayOf(const Object& object) const {
        auto array = Array::make();
        for (std::size_t place = 0; place < object.size; ++place) {
            auto element = valueAt(_list.elementAt(object, place));
            if (!element) {
                return std::nullopt;
            }
            array->addObject(std::move(*element));
        }
        return array;
    }

    // NOLINTNEXTLINE(misc-no-recursion): as valueAt.
    std::optional<Value> dictionaryOf(const Object& object) const {
        std::vector<std::pair<std::string, Value>> entries;
        for (std::size_t place = 0; place < object.size; ++place) {
            const auto key = valueAt(_list.elementAt(object, place));
            auto value = valueAt(_list.elementAt(object, place + object.size));
            if (!key || key->text() == nullptr || !value) {
                return std::nullopt;
            }
            entries.emplace_back(*key->text(), std::move(*value));
        }
        // In that order a dictionary fills in no time.
        std::ranges::stable_sort(entries, {}, &std::pair<std::string, Value>::first);
        auto dictionary = Dictionary::make();
        for (auto& [key, value] : entries) {
            dictionary->setObjectForKey(std::move(value), key);
        }
        return dictionary;
    }

    BinaryPropertyList _list;
};

} // namespace

std::optional<Value> valueOfBinaryList(std::string_view bytes) {
    return BinaryReader(bytes).root();
}

} // namespace exifcard::propertylist
