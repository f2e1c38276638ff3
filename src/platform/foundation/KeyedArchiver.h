#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/Value.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// An object in an archive: its class and what it wrote under each key.
struct ArchivedObject {
    std::string className;
    std::map<std::string, Value, std::less<>> fields;

    bool operator==(const ArchivedObject&) const = default;
};

/// Keyed archives of a mutable array of objects, in the platform's own binary
/// form, so that the platform's unarchiver reads them and what it wrote is read here.
namespace keyedarchive {

/// The archive of a mutable array whose elements are `objects`; fields may hold
/// texts, numbers and booleans.
Data archivedDataWithRootArray(const std::vector<ArchivedObject>& objects);

/// The elements of the archived root array. An element that is no object of a
/// class (a text, a number) is answered with an empty class name and the value
/// under "".
/// @throws PlatformException for bytes that are no archive, or whose root is no array.
std::vector<ArchivedObject> unarchiveRootArray(const Data& archive);

} // namespace keyedarchive

} // namespace exifcard
