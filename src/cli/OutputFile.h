#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace exifcard {

class CommandOptions;
class Data;

/// Where a command puts the files that it makes, as typed.
struct OutputOptions {
    std::string target; ///< A file, or a folder: one that exists or ends in "/".
    bool overwrites = false;
};

/// Declares -o and --force.
void declareOutput(CommandOptions& command, OutputOptions& options);

/// Whether the target is a folder, for any number of files.
bool isFolder(const OutputOptions& options);

/// Where the result of an input goes: the target, or in a folder the input's name.
/// @param extension  For a file in a folder, in place of the input's own: "jpg". Empty keeps that.
std::string outputPath(const OutputOptions& options, const std::string& input, std::string_view extension);

/// Writes the bytes, so that the whole file is there or none; the command can make it again, so the disk is
/// not waited for. Makes the folder that the target names.
/// @return Why not: "out.jpg is there already; --force replaces it". Nothing when all is written.
std::optional<std::string> writeOutput(
    const OutputOptions& options, const std::string& path, const Data& bytes);

} // namespace exifcard
