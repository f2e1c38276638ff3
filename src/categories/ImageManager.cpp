#include "categories/ImageManager.h"

namespace exifcard {

ImageManager& ImageManager::sharedInstance() {
    static ImageManager manager;
    return manager;
}

} // namespace exifcard
