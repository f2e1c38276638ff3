#pragma once

#include "platform/foundation/Data.h"

#include <string>
#include <string_view>

namespace exifcard {

/// The program's folders, from the XDG variables at each call, without a slash
/// at the end. They need not exist yet.
std::string configurationFolder(); ///< $XDG_CONFIG_HOME/exifcard
std::string dataFolder();          ///< $XDG_DATA_HOME/exifcard
std::string cacheFolder();         ///< $XDG_CACHE_HOME/exifcard
/// Ends with "/".
std::string temporaryDirectory();

/// Where a file of resources/ lies: beside the build, or where it is installed.
/// @return Empty when it is missing.
std::string resourcePath(std::string_view name);
/// Where a loadable module lies, by its name without ".so". Empty when it is missing.
std::string modulePath(std::string_view name);

/// Makes the folder and those above it, for the owner only. False when that fails.
bool makeFolder(const std::string& path);

/// Whether a written file must outlast a power cut, for which the disk is waited for, or can be made anew.
enum class Durability { Lasting, Replaceable };

/// Writes the bytes beside a temporary name for the owner only, syncs a lasting
/// file and renames, so that the file is the old or the new one at any moment. A
/// symbolic link stays one: the file that it names is replaced.
/// @return False when nothing was changed.
bool writeFileAtomically(
    const std::string& path, const Data& bytes, Durability durability = Durability::Lasting);

/// The same through a fixed temporary name, for a file that its writers lock: a
/// writer that was killed leaves at most this one file, and the next one uses it.
/// @param temporaryPath  In the folder of `path`; overwritten.
bool writeFileAtomically(const std::string& path, const Data& bytes, const std::string& temporaryPath);

/// Syncs a finished file and renames it to `path`, in the same folder, where it takes the place of what was
/// there.
/// @return False when that was left as it is.
bool moveIntoPlace(const std::string& finishedPath, const std::string& path);

/// Writes a file as above that must not be there yet: what stands at the path is never replaced.
bool writeNewFile(const std::string& path, const Data& bytes, Durability durability = Durability::Lasting);

} // namespace exifcard
