#include "platform/imageio/Exiv2Setup.h"

#include "platform/foundation/Log.h"

#include <exiv2/error.hpp>
#include <fmt/format.h>

#include <exception>
#include <mutex>

namespace exifcard {

void withExiv2(const std::function<void()>& use) {
    static std::once_flag once;
    std::call_once(once, [] { Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute); });
    try {
        use();
    } catch (const std::exception& error) { // Exiv2's own errors and what the standard library throws in it.
        if (isDebugLogWanted()) {
            debugLog(fmt::format("ImageIO: metadata left out: {}", error.what()));
        }
    }
}

} // namespace exifcard
