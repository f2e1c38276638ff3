#include "cli/OutputFile.h"

#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/URL.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace exifcard {

void declareOutput(CommandOptions& command, OutputOptions& options) {
    command.value("-o,--output", options.target, "Write to this file; for several files a folder")
        .required()
        .named(kFileTypeName);
    command.flag("--force", options.overwrites, "Replace files that are there");
}

bool isFolder(const OutputOptions& options) {
    std::error_code error;
    return options.target.ends_with('/') || std::filesystem::is_directory(options.target, error);
}

std::string outputPath(const OutputOptions& options, const std::string& input, std::string_view extension) {
    if (!isFolder(options)) {
        return options.target;
    }
    std::string name = lastPathComponent(input);
    if (!extension.empty()) {
        name = fmt::format("{}.{}", stringByDeletingPathExtension(name), extension);
    }
    return (std::filesystem::path(options.target) / name).string();
}

std::optional<std::string> writeOutput(
    const OutputOptions& options, const std::string& path, const Data& bytes) {
    if (isFolder(options) && !makeFolder(options.target)) {
        return fmt::format("cannot make the folder {}", options.target);
    }
    if (options.overwrites) {
        return writeFileAtomically(path, bytes, Durability::Replaceable)
                   ? std::nullopt
                   : std::optional(fmt::format("cannot write {}", path));
    }
    if (writeNewFile(path, bytes, Durability::Replaceable)) {
        return std::nullopt;
    }
    std::error_code error;
    return std::filesystem::exists(path, error)
               ? fmt::format("{} is there already; --force replaces it", path)
               : fmt::format("cannot write {}", path);
}

} // namespace exifcard
