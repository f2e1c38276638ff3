#pragma once

#include "settings/ExifKey.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// A field-order list of the settings, under the name that users type.
struct NamedFieldList {
    const char* name;
    /// Every entry, hidden ones among them.
    std::shared_ptr<const ExifKeys> (*stored)();
    std::shared_ptr<const ExifKeys> (*visible)();
    /// The list that nobody changed.
    ExifKeys (*defaults)();
    void (*store)(ExifKeys keys);
};

/// "card", "card-video", "share", "edit", "edit-video".
std::span<const NamedFieldList> namedFieldLists();
std::vector<std::string> fieldListNames();
/// @param name  One of `fieldListNames`.
const NamedFieldList& fieldListNamed(std::string_view name);

} // namespace exifcard
