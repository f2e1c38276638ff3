#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace exifcard {

/// Lets the option take these values alone; help shows them and completion offers them.
void limitToChoices(CLI::Option& option, const std::vector<std::string>& choices);

/// The choices that `limitToChoices` gave the option; empty for others.
std::vector<std::string> choicesOf(const CLI::Option& option);

/// Names that stand for files: completion offers those of the folder.
inline constexpr const char* kFileTypeName = "FILE";

/// "-q" and "--quiet".
std::vector<std::string> dashedNames(const CLI::Option& option);

/// "A,B" without empty parts: "A", "B".
std::vector<std::string> splitAtCommas(const std::string& text);

} // namespace exifcard
