#include "platform/foundation/KeyedArchiver.h"

#include "platform/foundation/PropertyListLibrary.h"
#include "platform/foundation/PropertyListTree.h"

#include <cstdint>
#include <utility>
#include <variant>

namespace exifcard::keyedarchive {
namespace {

using propertylist::plist;

constexpr std::int64_t kVersion = 100'000;
constexpr const char* kArchiver = "NSKeyedArchiver";

/// The class records name each class with those it is made from.
void appendClassChain(plist_t chain, const std::string& className) {
    plist().array_append_item(chain, plist().new_string(className.c_str()));
    if (className == "NSMutableArray") {
        plist().array_append_item(chain, plist().new_string("NSArray"));
    }
    plist().array_append_item(chain, plist().new_string("NSObject"));
}

/// Keys that begin with "$" are the archiver's own; a user's gets another in front.
std::string escapedKey(const std::string& key) {
    return key.starts_with('$') ? '$' + key : key;
}

class Archiver {
public:
    Archiver() : _objects(plist().new_array()) { append(plist().new_string("$null")); }

    Data archive(const std::vector<ArchivedObject>& elements) {
        plist_t root = plist().new_dict();
        const auto rootIndex = append(root);
        plist_t list = plist().new_array();
        plist().dict_set_item(root, "NS.objects", list);
        for (const ArchivedObject& element : elements) {
            plist().array_append_item(list, plist().new_uid(addElement(element)));
        }
        setClass(root, "NSMutableArray");

        const propertylist::Tree tree(plist().new_dict());
        plist().dict_set_item(tree.get(), "$version", plist().new_uint(kVersion));
        plist().dict_set_item(tree.get(), "$archiver", plist().new_string(kArchiver));
        plist_t top = plist().new_dict();
        plist().dict_set_item(tree.get(), "$top", top);
        plist().dict_set_item(top, "root", plist().new_uid(rootIndex));
        plist().dict_set_item(tree.get(), "$objects", _objects.release());
        return propertylist::binaryFromTree(tree);
    }

private:
    /// What is stored once, however often it is used.
    using Shared = std::variant<bool, std::int64_t, std::string>;

    /// Answers the node's place, by which others refer to it.
    std::uint64_t append(plist_t node) {
        plist().array_append_item(_objects.get(), node);
        return _count++;
    }

    std::uint64_t addElement(const ArchivedObject& element) {
        if (element.className.empty()) {
            const auto value = element.fields.find("");
            return value != element.fields.end() ? addValue(value->second) : 0;
        }
        plist_t node = plist().new_dict();
        const auto index = append(node);
        for (const auto& [key, value] : element.fields) {
            plist().dict_set_item(node, escapedKey(key).c_str(), plist().new_uid(addValue(value)));
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
            plist_t record = plist().new_dict();
            plist().dict_set_item(record, "$classname", plist().new_string(className.c_str()));
            plist_t chain = plist().new_array();
            appendClassChain(chain, className);
            plist().dict_set_item(record, "$classes", chain);
            found = _classes.emplace(className, append(record)).first;
        }
        plist().dict_set_item(object, "$class", plist().new_uid(found->second));
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
