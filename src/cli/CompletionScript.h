#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace exifcard {

/// The completion script for "bash", "zsh" or "fish", made by walking the command tree below `root`.
std::string completionScript(std::string_view shell, const CLI::App& root);

} // namespace exifcard
