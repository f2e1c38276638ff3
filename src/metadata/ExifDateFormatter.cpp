#include "metadata/ExifDateFormatter.h"

#include "platform/foundation/DateFormatter.h"

namespace exifcard {

const DateFormatter& exifDateFormatter() {
    static const DateFormatter formatter("yyyy:MM:dd HH:mm:ss", Locale::system());
    return formatter;
}

} // namespace exifcard
