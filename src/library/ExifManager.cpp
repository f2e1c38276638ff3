#include "library/ExifManager.h"

#include "metadata/ExifDateFormatter.h"

namespace exifcard {

const ExifManager& ExifManager::sharedInstance() {
    static const ExifManager manager;
    return manager;
}

const DateFormatter& ExifManager::dateFormatter() const {
    return exifDateFormatter();
}

} // namespace exifcard
