#pragma once

#include "platform/corelocation/GazetteerFormat.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace exifcard {

/// Reads the records of a gazetteer where they lie.
class PlaceRecords {
public:
    explicit PlaceRecords(std::span<const char> bytes) : _bytes(bytes) {}

    /// Brings the record into the processor's cache meanwhile, for it is hardly ever there.
    void prefetch(std::uint32_t position) const;
    /// Both nothing where the file is damaged.
    std::optional<gazetteer::Record> recordAt(std::uint32_t position) const;
    /// In UTF-8, as long as the file lives.
    std::optional<std::string_view> nameAt(std::uint32_t position) const;

private:
    std::span<const char> _bytes;
};

} // namespace exifcard
