#include "platform/foundation/KeyedArchiver.h"

#include "platform/foundation/PropertyListTree.h"

#include <plist/plist.h>

#include <cstdint>
#include <utility>
#include <variant>

namespace exifcard::keyedarchive {
namespace {

constexpr std::int64_t kVersion = 100'000;
constexpr const char* kArchiver = "NSKeyedArchiver";

/// The class records name each class with those it is made from.
void appendClassChain(plist_t chain, const std::string& className) {
    plist_array_append_item(chain, plist_new_string(className.c_str()));
    if (className == "NSMutableArray") {
        plist_array_append_item(chain, plist_new_string("NSArray"));
    }
    plist_array_append_item(chain, plist_new_string("NSObject"));
}

/// Keys that begin with "$" are the archiver's own; a user's gets another in front.
std::string escapedKey(const std::string& key) {
    return key.starts_with('$') ? '$' + key : key;
}

class Archiver {
public:
    Archiver() : _objects(plist_new_array()) { append(plist_new_string("$null")); }

    Data archive(const std::vector<ArchivedObject>& elements) {
        plist_t root = plist_new_dict();
        const auto rootIndex = append(root);
        plist_t list = plist_new_array();
        plist_dict_set_item(root, "NS.objects", list);
        for (const ArchivedObject& element : elements) {
            plist_array_append_item(list, plist_new_uid(addElement(element)));
        }
        setClass(root, "NSMutableArray");

        const propertylist::Tree tree(plist_new_dict());
        plist_dict_set_item(tree.get(), "$version", plist_new_uint(kVersion));
        plist_dict_set_item(tree.get(), "$archiver", plist_new_string(kArchiver));
        plist_t top = plist_new_dict();
        plist_dict_set_item(tree.get(), "$top", top);
        plist_dict_set_item(top, "root", plist_new_uid(rootIndex));
        plist_dict_set_item(tree.get(), "$objects", _objects.release());
        return propertylist::binaryFromTree(tree);
    }

private:
    /// What is stored once, however often it is used.
    using Shared = std::variant<bool, std::int64_t, std::string>;

    /// Answers the node's place, by which others refer to it.
    std::uint64_t append(plist_t node) {
        plist_array_append_item(_objects.get(), node);
        return _count++;
    }

    std::uint64_t addElement(const ArchivedObject& element) {
        if (element.className.empty()) {
            const auto value = element.fields.find("");
            return value != element.fields.end() ? addValue(value->second) : 0;
        }
        plist_t node = plist_new_dict();
        const auto index = append(node);
        for (const auto& [key, value] : element.fields) {
            plist_dict_set_item(node, escapedKey(key).c_str(), plist_new_uid(addValue(value)));
        }
        setClass(node, element.className);
        return index;
    }

    std::uint64_t addValue(const Value& value) {
        switch (value.kind()) {
        case Value::Kind::Bool:
            return addShared(value.boolValue(), value);
        case Value::Kind::Integer:
            return addShared(value.integerValue(), value);
        case Value::Kind::Text:
            return addShared(*value.text(), value);
        case Value::Kind::Float:
        case Value::Kind::Double:
        case Value::Kind::Data:
            return append(propertylist::treeFromValue(value).release());
        default:
            return 0;
        }
    }

    std::uint64_t addShared(Shared shared, const Value& value) {
        const auto found = _shared.find(shared);
        if (found != _shared.end()) {
            return found->second;
        }
        const auto index = append(propertylist::treeFromValue(value).release());
        _shared.emplace(std::move(shared), index);
        return index;
    }

    /// The record of a class follows its first object.
    void setClass(plist_t object, const std::string& className) {
        auto found = _classes.find(className);
        if (found == _classes.end()) {
            plist_t record = plist_new_dict();
            plist_dict_set_item(record, "$classname", plist_new_string(className.c_str()));
            plist_t chain = plist_new_array();
            appendClassChain(chain, className);
            plist_dict_set_item(record, "$classes", chain);
            found = _classes.emplace(className, append(record)).first;
        }
        plist_dict_set_item(object, "$class", plist_new_uid(found->second));
    }

    propertylist::Tree _objects;
    std::uint64_t _count = 0;
    std::map<Shared, std::uint64_t> _shared;
    std::map<std::string, std::uint64_t> _classes;
};

} // namespace

Data archivedDataWithRootArray(const std::vector<ArchivedObject>& objects) {
    return Archiver().archive(objects);
}

} // namespace exifcard::keyedarchive
