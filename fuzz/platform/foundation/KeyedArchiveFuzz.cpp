#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/PlatformException.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

/// What was read from an archive reads the same from an archive of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    using namespace exifcard;
    std::vector<ArchivedObject> objects;
    try {
        objects = keyedarchive::unarchiveRootArray(
            Data::fromBytes(std::vector<std::uint8_t>(bytes, bytes + count)));
    } catch (const PlatformException&) {
        return 0;
    }
    const Data archive = keyedarchive::archivedDataWithRootArray(objects);
    // By their bytes: a number that is none equals not even itself.
    if (keyedarchive::archivedDataWithRootArray(keyedarchive::unarchiveRootArray(archive)) != archive) {
        std::abort();
    }
    return 0;
}
