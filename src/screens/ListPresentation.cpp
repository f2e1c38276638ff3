#include "screens/ListPresentation.h"

#include "settings/PersistanceManager.h"

namespace exifcard {

std::uint64_t ListPresentation::viewType() const {
    return PersistanceManager::sharedInstance().tavolinViewType();
}

void ListPresentation::setViewType(std::uint64_t viewType) {
    PersistanceManager::sharedInstance().setTavolinViewType(viewType);
}

std::uint64_t ListPresentation::previousViewType() const {
    return PersistanceManager::sharedInstance().previousTavolinViewType();
}

bool ListPresentation::showsDetailsOnGrid() const {
    return PersistanceManager::sharedInstance().shouldShowExifDetailsOnGridView();
}

} // namespace exifcard
