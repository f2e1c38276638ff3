#pragma once

#include "metadata/ExifInformation.h"
#include "platform/foundation/Array.h"
#include "platform/foundation/Dictionary.h"
#include "platform/imageio/ImageProperties.h"

#include <initializer_list>
#include <memory>
#include <string>

namespace exifcard {

using Entries = std::initializer_list<Dictionary::Entry>;
using Formatter = ExifValue (ExifInformation::*)() const;

/// The record of a photo with these top-level properties.
inline std::shared_ptr<ExifInformation> recordWith(Entries properties) {
    return ExifInformation::exifInformationFromMetaDataDictionary(Dictionary::make(properties));
}

/// The record of a photo with one sub-dictionary.
inline std::shared_ptr<ExifInformation> recordWith(std::string_view dictionary, Entries entries) {
    return recordWith({{std::string(dictionary), Dictionary::make(entries)}});
}

/// The record of a photo with one entry in {Exif}; nothing leaves it empty.
inline std::shared_ptr<ExifInformation> recordWithExif(std::string_view key, const Value& value) {
    return recordWith(kCGImagePropertyExifDictionary, {{std::string(key), value}});
}

inline std::string textOf(const ExifValue& row) {
    return row.exifValueReadableFormat.value_or("(unset)");
}

} // namespace exifcard
