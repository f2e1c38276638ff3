#pragma once

#include "platform/foundation/Value.h"
#include "platform/imageio/TiffBlock.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

/// The element at `index` as an integer, a fraction truncated; nothing beyond the end, for a text and for
/// a fraction over 0.
std::optional<std::int64_t> integerAt(const TiffEntry& entry, std::size_t index);
/// The element at `index` as a number; nothing beyond the end, for a text and for a fraction over 0.
std::optional<double> realAt(const TiffEntry& entry, std::size_t index);
/// The characters up to the first NUL as UTF-8; empty for numbers.
std::string textOf(const TiffEntry& entry);

/// Four digits "aabc" as the array [aa, b, c], a last 0 dropped; nothing for other texts.
Value versionFromDigits(std::string_view digits);

// Each of these answers the value that a dictionary keeps for the entry, or
// nothing when the entry holds none. Several numbers become an array.
Value integerFromEntry(const TiffEntry& entry);
Value realFromEntry(const TiffEntry& entry);
Value textFromEntry(const TiffEntry& entry);
/// An array, even of a single number.
Value integersFromEntry(const TiffEntry& entry);
Value realsFromEntry(const TiffEntry& entry);
/// The number of the first byte, whatever the type.
Value firstByteFromEntry(const TiffEntry& entry);
Value dataFromEntry(const TiffEntry& entry);
Value versionFromEntry(const TiffEntry& entry);
/// Text behind eight bytes that name its character set, without trailing blanks.
Value commentFromEntry(const TiffEntry& entry);
/// Degrees, minutes and seconds as degrees, never negative: the reference beside them tells the side.
Value angleFromEntry(const TiffEntry& entry);
/// Hours, minutes and seconds as "15:53:24"; hundredths follow when there are any.
Value timeOfDayFromEntry(const TiffEntry& entry);

} // namespace exifcard
