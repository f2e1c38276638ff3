#pragma once

#include <string>

namespace exifcard {

/// What a loadable module exports under a name. The module stays loaded until the program ends.
/// @param module  Its name without ".so".
/// @return Null when the module or the name is missing, which is logged.
void* moduleEntry(const std::string& module, const char* name);

/// Calls the entry that makes a module's one service. Null when it is missing.
template<typename Entry>
auto moduleService(const std::string& module, const char* name) {
    auto* const entry = reinterpret_cast<Entry*>(moduleEntry(module, name));
    return entry != nullptr ? entry() : nullptr;
}

} // namespace exifcard
