#include "platform/foundation/PropertyList.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace exifcard;

namespace {

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

/// What was read is written so that it is read as the same again.
void checkRoundTrip(const Value& value, Data (*write)(const Value&)) {
    const Data written = write(value);
    if (const auto again = propertylist::read(written)) {
        require(propertylist::writeXML(*again) == propertylist::writeXML(value));
    } else {
        require(write == propertylist::writeXML); // Its texts may have more entities than are read.
    }
}

} // namespace

/// As a settings suite is used: read, and one key of it changed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto file = Data::fromBytes(std::vector<std::uint8_t>(bytes, bytes + count));
    if (const auto value = propertylist::read(file)) {
        checkRoundTrip(*value, propertylist::writeXML);
        checkRoundTrip(*value, propertylist::writeBinary);
    }
    const std::vector<propertylist::Change> changes = {{"sortByKeyValue", 1}};
    const auto changed = propertylist::withChanges(file, changes);
    if (const auto value = changed ? propertylist::read(*changed) : std::nullopt) {
        const auto again = propertylist::withChanges(*changed, changes);
        // By what is read: the library merges equal data of the binary form only where memory happens to lie
        // so.
        require(
            again && propertylist::writeXML(*propertylist::read(*again)) == propertylist::writeXML(*value));
    }
    return 0;
}
