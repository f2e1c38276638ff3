#pragma once

#include "platform/photos/PHAsset.h"

#include <optional>
#include <string>
#include <vector>

namespace exifcard {

class CommandOptions;

class Session;

/// Whether the text may be an asset's identifier or the first eight or more characters of one: digits, the
/// letters A to F in either case, and dashes.
bool isAssetName(const std::string& text);

/// The asset of the library that has this identifier, or whose identifier alone begins so. Null without one.
/// Blocks.
PHAssetPtr assetNamed(const std::string& text);

/// Whether the library can be read; else one line is told. Blocks.
bool canReadLibrary(Session& session);

/// Declares ASSET…
void declareAssets(CommandOptions& command, std::vector<std::string>& names);
/// The assets so named; of a name that is none of the library, one line is told. Blocks.
std::vector<PHAssetPtr> assetsNamed(const std::vector<std::string>& names, Session& session);

/// Where the asset's first file lies; nothing while it is elsewhere or gone. Blocks.
std::optional<std::string> fileOfAsset(const PHAsset& asset);

/// What a name stands for.
struct NamedFile {
    std::string path;                      ///< The name itself where it is neither a file's nor an asset's.
    std::optional<std::string> fault = {}; ///< Why the library cannot be asked: one sentence with its file.
};

/// The file that a name stands for: a file's own name, or that of the asset so named. The library is asked
/// only for what may be an asset's name and is no file. Any thread; blocks.
NamedFile fileNamed(const std::string& name);

} // namespace exifcard
