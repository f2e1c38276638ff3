#include "cli/FieldLists.h"

#include "settings/AppSettings.h"
#include "settings/PersistanceManager.h"

namespace exifcard {
namespace {

AppSettings& cards() {
    return AppSettings::sharedInstance();
}

PersistanceManager& preferences() {
    return PersistanceManager::sharedInstance();
}

constexpr NamedFieldList kFieldLists[] = {
    {"card", [] { return cards().exifKeysOrderedArray(); },
        [] { return cards().exifVisibleKeysOrderedArray(); }, AppSettings::exifKeysDefaultOrderedArray,
        [](ExifKeys keys) { cards().setExifKeysOrderedArray(std::move(keys)); }},
    {"card-video", [] { return cards().exifKeysOrderedArray_Video(); },
        [] { return cards().exifVisibleKeysOrderedArray_Video(); },
        AppSettings::exifKeysDefaultOrderedArrayForVideos,
        [](ExifKeys keys) { cards().setExifKeysOrderedArray_Video(std::move(keys)); }},
    {"share", [] { return preferences().sharedExifVisibleKeysOrderedArray(); },
        [] { return preferences().allSharedExifVisibleKeysOrderedArray(); },
        PersistanceManager::sharedExifKeysDefaultOrderedArray,
        [](ExifKeys keys) { preferences().setSharedExifVisibleKeysOrderedArray(std::move(keys)); }},
    {"edit", [] { return preferences().sharedEditEXIFVisibleKeysOrderedArray(); },
        [] { return preferences().allSharedEditEXIFVisibleKeysOrderedArray(); },
        PersistanceManager::sharedEDITExifKeysDefaultOrderedArray,
        [](ExifKeys keys) { preferences().setSharedEditEXIFVisibleKeysOrderedArray(std::move(keys)); }},
    {"edit-video", [] { return preferences().sharedEditEXIFVisibleKeysOrderedArrayForVideo(); },
        [] { return preferences().allSharedEditEXIFVisibleKeysOrderedArrayForVideo(); },
        PersistanceManager::sharedEDITExifKeysDefaultOrderedArrayForVideo,
        [](ExifKeys keys) {
            preferences().setSharedEditEXIFVisibleKeysOrderedArrayForVideo(std::move(keys));
        }},
};

} // namespace

std::span<const NamedFieldList> namedFieldLists() {
    return kFieldLists;
}

std::vector<std::string> fieldListNames() {
    std::vector<std::string> names;
    for (const NamedFieldList& list : kFieldLists) {
        names.emplace_back(list.name);
    }
    return names;
}

const NamedFieldList& fieldListNamed(std::string_view name) {
    for (const NamedFieldList& list : kFieldLists) {
        if (list.name == name) {
            return list;
        }
    }
    return kFieldLists[0]; // Not reached: the command line takes no other name.
}

} // namespace exifcard
