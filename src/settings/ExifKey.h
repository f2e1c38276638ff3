#pragma once

#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/Value.h"

#include <memory>
#include <string>
#include <vector>

namespace exifcard {

/// One entry of a field-order list. Who shows a list holds its entries: to
/// change one, put a new one in its place and store the list.
struct ExifKey {
    std::string key;        ///< The field key; empty at first.
    Value isHidden = false; ///< A number, as it is archived; ask its `boolValue`.

    static std::shared_ptr<ExifKey> initWithKey(std::string key, bool isHidden);
    /// A visible entry.
    static std::shared_ptr<ExifKey> exifWithKey(std::string key);

    void encodeWithCoder(ArchivedObject& coder) const;
    /// @return Null for an object of another class.
    static std::shared_ptr<ExifKey> initWithCoder(const ArchivedObject& coder);
};

/// A field-order list, in display order. Null stands for an entry that is no `ExifKey`.
using ExifKeys = std::vector<std::shared_ptr<ExifKey>>;

} // namespace exifcard
