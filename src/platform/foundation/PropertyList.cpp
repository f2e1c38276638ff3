#include "platform/foundation/PropertyList.h"

#include "platform/foundation/BinaryPropertyListValue.h"
#include "platform/foundation/PropertyListBounds.h"
#include "platform/foundation/PropertyListLibrary.h"
#include "platform/foundation/PropertyListText.h"
#include "platform/foundation/PropertyListTree.h"

namespace exifcard::propertylist {
namespace {

void applyChange(void* dictionary, const Change& change) {
    const std::string key = wellFormedText(change.first);
    if (auto node = treeFromValue(change.second)) {
        plist().dict_set_item(dictionary, key.c_str(), node.release());
    } else if (plist().dict_get_item(dictionary, key.c_str()) != nullptr) {
        plist().dict_remove_item(dictionary, key.c_str());
    }
}

} // namespace

std::optional<Value> read(const Data& bytes) {
    const auto text = bytes.text();
    if (isBinary(text)) {
        return isWithinBounds(text) ? valueOfBinaryList(text) : std::nullopt;
    }
    const auto tree = treeFromBytes(bytes);
    auto value = valueFromNode(tree.get());
    return value.isNothing() ? std::nullopt : std::optional(std::move(value));
}

Data writeXML(const Value& value) {
    return xmlFromTree(treeFromValue(value));
}

Data writeBinary(const Value& value) {
    return binaryFromTree(treeFromValue(value));
}

std::optional<Data> withChanges(const Data& bytes, const std::vector<Change>& changes) {
    auto tree = treeFromBytes(bytes);
    const bool isDictionary = tree && plist().get_node_type(tree.get()) == PLIST_DICT;
    if (!isDictionary) {
        tree.reset(plist().new_dict());
    }
    for (const Change& change : changes) {
        applyChange(tree.get(), change);
    }
    // What stands in XML stays so; a new list is binary, which is read ten times faster.
    auto changed = isDictionary && !isBinary(bytes.text()) ? xmlFromTree(tree) : binaryFromTree(tree);
    return isWithinBounds(changed.text()) ? std::optional(std::move(changed)) : std::nullopt;
}

} // namespace exifcard::propertylist
