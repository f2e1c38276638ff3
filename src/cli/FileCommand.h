#pragma once

#include "cli/Command.h"
#include "cli/OrderedPipeline.h"

#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {

/// The files that a command works on, as typed; the identifier of an asset stands for its file.
struct FileArguments {
    std::vector<std::string> names;
    bool isNulSeparated = false; ///< Names on standard input end with NUL instead of a line end.
};

/// Declares FILE… and -0.
void declareFiles(CommandOptions& command, FileArguments& arguments);

/// Whether exactly one file is named; names on standard input may be any number.
bool isOneFile(const FileArguments& arguments);

/// What a command makes of one file. Called by several threads at once.
using FileWork = std::function<FileResult(const std::string& name)>;

/// Works on every file and prints the results in order; text for people gets the file's name as a heading
/// where there are several.
ExitStatus runOverFiles(const FileArguments& arguments,
    Session& session,
    const FileWork& work,
    unsigned mostJobs = std::numeric_limits<unsigned>::max());

/// The result of a file that failed: for JSON an object too.
/// @param action  What cannot be done: "read".
/// @param cause   "no such file"
FileResult failedFile(
    const std::string& name, std::string_view action, const std::string& cause, bool isJSON);

} // namespace exifcard
