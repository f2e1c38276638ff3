#include "categories/ImageManager.h"

namespace exifcard {

ImageManager& ImageManager::sharedInstance() {
    static auto& manager = *new ImageManager; // Pictures may be asked for while the program ends.
    return manager;
}

} // namespace exifcard
