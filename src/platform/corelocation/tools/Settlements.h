#pragma once

#include "platform/corelocation/tools/SourceTables.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace exifcard {

/// A place where people live.
struct Settlement {
    PlaceRow row;
    double radius = 0;               ///< Of its extent, in kilometres.
    std::optional<std::size_t> town; ///< Of a quarter: the number of the settlement that it is a section of.
};

/// Tells how far each place extends, and which is a quarter of which town.
/// Places that people have left are dropped.
std::vector<Settlement> settlementsFromRows(std::vector<PlaceRow> rows);

} // namespace exifcard
