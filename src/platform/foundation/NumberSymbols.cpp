#include "platform/foundation/NumberSymbols.h"

#include <map>
#include <mutex>
#include <string>

namespace exifcard {

const icu::DecimalFormatSymbols& numberSymbols(const Locale& locale) {
    static auto& mutex = *new std::mutex();
    static auto& known = *new std::map<std::string, icu::DecimalFormatSymbols>(); // Guarded by mutex.
    const std::lock_guard lock(mutex);
    const auto found = known.find(locale.identifier());
    if (found != known.end()) {
        return found->second;
    }
    auto status = U_ZERO_ERROR;
    return known
        .emplace(
            locale.identifier(), icu::DecimalFormatSymbols(icu::Locale(locale.identifier().c_str()), status))
        .first->second;
}

} // namespace exifcard
