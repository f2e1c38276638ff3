#pragma once

#include <cstdint>
#include <string>

namespace exifcard {

// The backup is a catalogue that holds only what no file tells: the roots, the user's albums, and the assets
// that the user said something of, as vanished ones that come back when the import finds their files.

/// Brings the backup of a catalogue up to date in one transaction; where there is none, or a damaged one,
/// writes it by a temporary name and a rename. Takes about as long as going over what the user said of
/// assets.
/// @return False when the old one was left as it was; one log line tells why.
bool writeCatalogueBackup(const std::string& catalogue, const std::string& backup);

/// Tells whether a path names the same file as before; 0 for none.
std::uint64_t fileNumberOf(const std::string& path);

/// Puts the catalogue of that path in place, from the backup where there is a good one, else an empty one
/// later. What is there already is moved aside as "….damaged", unless it is good.
/// @param damaged  The number of a file that was found damaged, which may not be seen at once; 0: none.
void restoreCatalogue(const std::string& catalogue, const std::string& backup, std::uint64_t damaged);

} // namespace exifcard
