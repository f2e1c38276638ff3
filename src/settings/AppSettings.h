#pragma once

#include "settings/ExifKey.h"
#include "settings/FieldList.h"

#include <memory>

namespace exifcard {

/// The order of the fields on the back of a card, for photos and for videos.
/// Thread-safe.
class AppSettings {
public:
    /// The one object; made, and the suite read, on first use.
    static AppSettings& sharedInstance();
    /// Drops the one object, so that the next use reads the suite of the present folders; for tests.
    static void forgetSharedInstance();

    AppSettings();
    AppSettings(const AppSettings&) = delete;
    AppSettings& operator=(const AppSettings&) = delete;

    static ExifKeys exifKeysDefaultOrderedArray();
    static ExifKeys exifKeysDefaultOrderedArrayForVideos();
    /// The entries of the default list for photos, or for videos, whose key
    /// occurs nowhere in the keys of `array`.
    static ExifKeys missingExifOrderedKeysIn(const ExifKeys& array, bool forVideo);

    // NOLINTBEGIN(readability-identifier-naming): given names.
    std::shared_ptr<const ExifKeys> exifKeysOrderedArray() const;
    std::shared_ptr<const ExifKeys> exifKeysOrderedArray_Video() const;
    void setExifKeysOrderedArray(ExifKeys keys);
    void setExifKeysOrderedArray_Video(ExifKeys keys);
    // Their entries that are not hidden.
    std::shared_ptr<const ExifKeys> exifVisibleKeysOrderedArray() const;
    std::shared_ptr<const ExifKeys> exifVisibleKeysOrderedArray_Video() const;
    // NOLINTEND(readability-identifier-naming)
    /// Takes the lists that another program stored meanwhile.
    void reloadFieldLists();

private:
    FieldList _keys;
    FieldList _keysForVideo;
};

} // namespace exifcard
