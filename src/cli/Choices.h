#pragma once

#include <string>
#include <vector>

namespace CLI {
class Option;
}

namespace exifcard {

/// The choices that an option is limited to; empty for others.
std::vector<std::string> choicesOf(const CLI::Option& option);

/// Names that stand for files: completion offers those of the folder.
inline constexpr const char* kFileTypeName = "FILE";

/// "-q" and "--quiet".
std::vector<std::string> dashedNames(const CLI::Option& option);

/// "A,B" without empty parts: "A", "B".
std::vector<std::string> splitAtCommas(const std::string& text);

} // namespace exifcard
