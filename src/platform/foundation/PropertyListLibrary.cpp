#include "platform/foundation/PropertyListLibrary.h"

#include "platform/foundation/LoadableModule.h"

#include <stdexcept>

namespace exifcard::propertylist {

const PropertyListLibrary& plist() {
    static const auto* const library =
        moduleService<PropertyListLibraryEntry>("propertylist", kPropertyListLibraryEntry);
    if (library == nullptr) {
        throw std::runtime_error("the module propertylist is missing: settings cannot be written");
    }
    return *library;
}

} // namespace exifcard::propertylist
