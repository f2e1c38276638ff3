#include "platform/corelocation/PlaceRecords.h"

#include "platform/foundation/UTF8.h"

#include <algorithm>
#include <cstring>

namespace exifcard {

using gazetteer::Record;

void PlaceRecords::prefetch(std::uint32_t position) const {
    __builtin_prefetch(_bytes.data() + std::min(std::size_t{position}, _bytes.size()));
}

std::optional<Record> PlaceRecords::recordAt(std::uint32_t position) const {
    if (position > _bytes.size() || sizeof(Record) > _bytes.size() - position) {
        return std::nullopt;
    }
    Record record;
    std::memcpy(&record, _bytes.data() + position, sizeof record);
    return record;
}

std::optional<std::string_view> PlaceRecords::nameAt(std::uint32_t position) const {
    const auto record = recordAt(position);
    if (!record || record->nameLength > _bytes.size() - position - sizeof(Record)) {
        return std::nullopt;
    }
    const std::string_view name(_bytes.data() + position + sizeof(Record), record->nameLength);
    return isValidUTF8(name) ? std::optional(name) : std::nullopt;
}

} // namespace exifcard
