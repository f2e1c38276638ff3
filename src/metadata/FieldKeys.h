#pragma once

#include "metadata/ExifValue.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace exifcard {

class ExifInformation;

/// What a field key gives: a row, a stored value as it stands, or a row that has nothing but its key.
enum class FieldKind : std::uint8_t { Row, Raw, EmptyRow };

/// A field of a record, known by its key.
struct FieldKey {
    using Formatter = ExifValue (ExifInformation::*)() const;

    std::string_view key;
    FieldKind kind = FieldKind::Row;
    const char* label = nullptr;   ///< English, the key of its translation; null for what has no label.
    Formatter formatter = nullptr; ///< Null for raw keys.
    std::string_view storedUnder;  ///< Where a raw key reads the properties dictionary; empty for nowhere.
};

/// Every field key, in the order in which programs list them.
std::span<const FieldKey> fieldKeys();
/// Null for a text that is no field key; capitals count.
const FieldKey* findFieldKey(std::string_view key);
inline bool isFieldKey(std::string_view key) {
    return findFieldKey(key) != nullptr;
}

} // namespace exifcard
