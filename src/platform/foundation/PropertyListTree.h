#pragma once

#include "platform/foundation/PropertyList.h"

#include <memory>
#include <string>

namespace exifcard::propertylist {

struct NodeDeleter {
    void operator()(void* node) const;
};

/// A node of the property-list library, with all that lies below it.
using Tree = std::unique_ptr<void, NodeDeleter>;

/// The bytes as a tree within the bounds, all its texts well formed.
/// @return Null for bytes that are no property list or go beyond the bounds.
Tree treeFromBytes(const Data& bytes);
/// @return Null for nothing, and for what is nested beyond the bounds.
Tree treeFromValue(const Value& value);
/// @param node  Null, and what a property list cannot hold, gives nothing.
Value valueFromNode(void* node);

Data binaryFromTree(const Tree& tree);
Data xmlFromTree(const Tree& tree);

/// A key and the node under it.
using Entry = std::pair<std::string, void*>;
/// The entries of a dictionary node, in its order; empty for any other.
std::vector<Entry> entriesOfNode(void* node);
/// The elements of an array node; empty for any other.
std::vector<void*> elementsOfNode(void* node);

} // namespace exifcard::propertylist
