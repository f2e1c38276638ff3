#include "platform/foundation/LoadableModule.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"

#include <dlfcn.h>

namespace exifcard {
namespace {

#ifdef EXIFCARD_DEEP_BINDING
constexpr int kBinding = EXIFCARD_DEEP_BINDING;
#else
constexpr int kBinding = 0;
#endif

} // namespace

void* moduleEntry(const std::string& module, const char* name) {
    const std::string path = modulePath(module);
    void* const library = path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | kBinding);
    void* const entry = library != nullptr ? dlsym(library, name) : nullptr;
    if (entry == nullptr) {
        errorLog("The module " + module + " is missing; what needs it is left out");
    }
    return entry;
}

} // namespace exifcard
