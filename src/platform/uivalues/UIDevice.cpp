#include "platform/uivalues/UIDevice.h"

#include <algorithm>
#include <charconv>

namespace exifcard {
namespace {

std::string& storedVersion() {
    static std::string version = "13.0";
    return version;
}

/// Takes one component off the front: a run of digits as a number, 0 where there is none.
long takeComponent(std::string_view& rest) {
    long number = 0;
    const auto parsed = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    rest.remove_prefix(static_cast<std::size_t>(parsed.ptr - rest.data()));
    rest.remove_prefix(std::min<std::size_t>(rest.size(), 1)); // The point.
    return number;
}

} // namespace

const std::string& systemVersion() {
    return storedVersion();
}

void setSystemVersion(std::string version) {
    storedVersion() = std::move(version);
}

bool isSystemVersionAtLeast(std::string_view version) {
    std::string_view own = storedVersion();
    while (!version.empty()) {
        // Intended: "13" is below "13.0", since a text that ends sooner orders first.
        if (own.empty()) {
            return false;
        }
        const long wanted = takeComponent(version);
        const long present = takeComponent(own);
        if (wanted != present) {
            return present > wanted;
        }
    }
    return true;
}

} // namespace exifcard
