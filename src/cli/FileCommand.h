#pragma once

#include "cli/Command.h"
#include "cli/OrderedPipeline.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace exifcard {

class ExifInformation;

/// The files that a command works on, as typed.
struct FileArguments {
    std::vector<std::string> names;
    bool isNulSeparated = false; ///< Names on standard input end with NUL instead of a line end.
};

/// Declares FILE… and -0.
void declareFiles(CLI::App& app, FileArguments& arguments);

/// What a command makes of one file. Called by several threads at once.
using FileWork = std::function<FileResult(const std::string& name)>;

/// Works on every file and prints the results in order; text for people gets the file's name as a heading
/// where there are several.
ExitStatus runOverFiles(const FileArguments& arguments, Session& session, const FileWork& work);

/// The result of a file that cannot be read: for JSON an object too.
/// @param cause  "no such file"
FileResult failedFile(const std::string& name, const std::string& cause, bool isJSON);

} // namespace exifcard
