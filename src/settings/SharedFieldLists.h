#pragma once

#include "settings/ExifKey.h"
#include "settings/FieldList.h"

#include <memory>

namespace exifcard {

class UserDefaults;

/// The part of the settings that orders fields: those that are shared as text,
/// and those that are offered for editing a photo and a video. Thread-safe.
class SharedFieldLists {
public:
    static ExifKeys sharedExifKeysDefaultOrderedArray();
    static ExifKeys sharedEDITExifKeysDefaultOrderedArray();
    static ExifKeys sharedEDITExifKeysDefaultOrderedArrayForVideo();
    /// The entries of `comparedTo` whose key occurs nowhere in the keys of `stored`.
    static ExifKeys missingExifKeysIn(const ExifKeys& stored, const ExifKeys& comparedTo);

    std::shared_ptr<const ExifKeys> sharedExifVisibleKeysOrderedArray() const;
    std::shared_ptr<const ExifKeys> sharedEditEXIFVisibleKeysOrderedArray() const;
    std::shared_ptr<const ExifKeys> sharedEditEXIFVisibleKeysOrderedArrayForVideo() const;
    void setSharedExifVisibleKeysOrderedArray(ExifKeys keys);
    void setSharedEditEXIFVisibleKeysOrderedArray(ExifKeys keys);
    void setSharedEditEXIFVisibleKeysOrderedArrayForVideo(ExifKeys keys);
    // Their entries that are not hidden.
    std::shared_ptr<const ExifKeys> allSharedExifVisibleKeysOrderedArray() const;
    std::shared_ptr<const ExifKeys> allSharedEditEXIFVisibleKeysOrderedArray() const;
    std::shared_ptr<const ExifKeys> allSharedEditEXIFVisibleKeysOrderedArrayForVideo() const;
    /// Takes the lists that another program stored meanwhile.
    void reloadFieldLists();

protected:
    SharedFieldLists();
    ~SharedFieldLists() = default;

    /// Takes each list from the suite, or stores the default there, and adds what newer defaults have.
    void loadFieldLists(const UserDefaults& suite);

private:
    FieldList _sharedKeys;
    FieldList _editKeys;
    FieldList _editKeysForVideo;
};

} // namespace exifcard
