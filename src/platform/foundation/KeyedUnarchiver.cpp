#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/PlatformException.h"
#include "platform/foundation/PropertyListBounds.h"
#include "platform/foundation/PropertyListTree.h"

#include <plist/plist.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace exifcard::keyedarchive {
namespace {

/// Elements and fields in all: ten times the longest list. An element may be
/// referred to any number of times, so a small archive can ask for many.
constexpr std::size_t kMostParts = 4000;
constexpr std::size_t kMostTextBytes = 1U << 20U;

[[noreturn]] void refuse(const std::string& reason) {
    throw PlatformException("NSInvalidArgumentException", "the keyed archive " + reason);
}

std::string textOfNode(plist_t node) {
    const Value value = propertylist::valueFromNode(node);
    return value.text() != nullptr ? *value.text() : std::string();
}

class Unarchiver {
public:
    explicit Unarchiver(const Data& archive)
        // In XML form the references come out as dictionaries.
        : _tree(propertylist::isBinary(archive.text()) ? propertylist::treeFromBytes(archive) : nullptr)
        , _objects(propertylist::elementsOfNode(plist_dict_get_item(_tree.get(), "$objects"))) {
        if (textOfNode(plist_dict_get_item(_tree.get(), "$archiver")) != "NSKeyedArchiver") {
            refuse("is none");
        }
    }

    std::vector<ArchivedObject> rootArray() {
        auto* const root = resolved(plist_dict_get_item(plist_dict_get_item(_tree.get(), "$top"), "root"));
        const auto classes = classesOf(root);
        if (std::ranges::count(classes, "NSArray") == 0) {
            refuse("holds no array");
        }
        std::vector<ArchivedObject> elements;
        for (plist_t element : propertylist::elementsOfNode(plist_dict_get_item(root, "NS.objects"))) {
            elements.push_back(elementOf(resolved(element)));
        }
        return elements;
    }

private:
    /// The object that a reference means, or the node itself when it is no
    /// reference. Null for the reference to nothing.
    plist_t resolved(plist_t node) const {
        if (!PLIST_IS_UID(node)) {
            return node;
        }
        std::uint64_t index = 0;
        plist_get_uid_val(node, &index);
        if (index >= _objects.size()) {
            refuse("refers to an object beyond its end");
        }
        return index > 0 ? _objects[index] : nullptr;
    }

    /// The name of the object's class and of those it is made from; empty for what is no object.
    std::vector<std::string> classesOf(plist_t object) const {
        auto* const record = resolved(plist_dict_get_item(object, "$class"));
        std::vector<std::string> names = {textOfNode(plist_dict_get_item(record, "$classname"))};
        for (plist_t name : propertylist::elementsOfNode(plist_dict_get_item(record, "$classes"))) {
            names.push_back(textOfNode(name));
        }
        return names;
    }

    ArchivedObject elementOf(plist_t node) {
        spend(1, 0);
        ArchivedObject object;
        const auto classes = classesOf(node);
        if (classes.front().empty() || std::ranges::count(classes, "NSString") > 0) {
            object.fields.emplace("", valueOf(node));
            return object;
        }
        object.className = classes.front();
        for (const auto& [key, field] : propertylist::entriesOfNode(node)) {
            const bool isEscaped = key.starts_with("$$");
            if (isEscaped || !key.starts_with('$')) {
                object.fields.emplace(key.substr(isEscaped ? 1 : 0), valueOf(resolved(field)));
                spend(1, key.size());
            }
        }
        return object;
    }

    /// The text, number or boolean; nothing for any other object.
    Value valueOf(plist_t node) {
        auto* const inlined = PLIST_IS_DICT(node) ? resolved(plist_dict_get_item(node, "NS.string")) : node;
        if (inlined == nullptr || PLIST_IS_DICT(inlined) || PLIST_IS_ARRAY(inlined)) {
            return {};
        }
        std::uint64_t length = 0;
        plist_get_string_ptr(inlined, &length);
        plist_get_data_ptr(inlined, &length);
        spend(0, length);
        return propertylist::valueFromNode(inlined);
    }

    void spend(std::size_t parts, std::size_t textBytes) {
        _parts += parts;
        _textBytes += textBytes;
        if (_parts > kMostParts || _textBytes > kMostTextBytes) {
            refuse("holds too much");
        }
    }

    propertylist::Tree _tree;
    std::vector<void*> _objects; // Owned by the tree.
    std::size_t _parts = 0;
    std::size_t _textBytes = 0;
};

} // namespace

std::vector<ArchivedObject> unarchiveRootArray(const Data& archive) {
    return Unarchiver(archive).rootArray();
}

} // namespace exifcard::keyedarchive
