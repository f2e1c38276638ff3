#include "metadata/ExifDateFormatter.h"

#include "platform/foundation/DateFormatter.h"
#include "settings/PersistanceManager.h"

namespace exifcard {

const DateFormatter& exifDateFormatter() {
    static const DateFormatter formatter(
        PersistanceManager::exifStandardDateFormatString(), Locale::system());
    return formatter;
}

} // namespace exifcard
