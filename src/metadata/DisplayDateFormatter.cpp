#include "metadata/DisplayDateFormatter.h"

#include "platform/foundation/DateFormatter.h"
#include "settings/PersistanceManager.h"

#include <memory>
#include <mutex>

namespace exifcard {
namespace {

/// The formatter of `pattern`; the last one is kept, as making one is dear.
std::shared_ptr<const DateFormatter> formatterOfPattern(const std::string& pattern) {
    static std::mutex mutex;
    static std::shared_ptr<const DateFormatter> last; // Guarded by mutex.
    const std::lock_guard lock(mutex);
    if (!last || last->dateFormat() != pattern) {
        last = std::make_shared<const DateFormatter>(pattern);
    }
    return last;
}

} // namespace

std::string displayTextOfDate(const std::optional<Date>& date) {
    if (!date) {
        return {};
    }
    return formatterOfPattern(PersistanceManager::sharedInstance().dateFormatString())->stringFromDate(*date);
}

} // namespace exifcard
