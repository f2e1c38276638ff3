#pragma once

#include "platform/foundation/PropertyList.h"

#include <memory>
#include <string>
#include <string_view>

namespace exifcard::propertylist {

struct NodeDeleter {
    void operator()(void* node) const;
};

/// A node of the property-list library, with all that lies below it.
using Tree = std::unique_ptr<void, NodeDeleter>;

/// @return Null for bytes that are no property list or go beyond the bounds.
Tree treeFromBytes(const Data& bytes);
/// @return Null for nothing, and for what is nested beyond the bounds.
Tree treeFromValue(const Value& value);
/// @param node  May be null; a node nested beyond the bounds gives nothing.
Value valueFromNode(void* node);

Data binaryFromTree(const Tree& tree);
Data xmlFromTree(const Tree& tree);

/// The text with U+FFFD in place of each byte that is no UTF-8 and each
/// character that XML cannot hold.
std::string wellFormedText(std::string_view text);

/// The keys and values of a dictionary node, in its order; empty for any other.
std::vector<std::pair<std::string, void*>> entriesOfNode(void* node);
/// The elements of an array node; empty for any other.
std::vector<void*> elementsOfNode(void* node);

} // namespace exifcard::propertylist
