#include "metadata/DeviceMapping.h"

#include "metadata/DeviceNames.h"

namespace exifcard {

std::string DeviceMapping::getDeviceNameFromMachineIdentifier(std::string_view identifier) {
    std::string_view rest = kDeviceNames;
    while (!rest.empty()) {
        const auto middle = rest.size() / 2;
        const auto start = middle == 0 ? 0 : rest.rfind('\n', middle - 1) + 1; // 0 when there is none.
        const auto end = rest.find('\n', middle);
        const std::string_view line = rest.substr(start, end - start);
        const std::string_view candidate = line.substr(0, line.find('\t'));
        if (candidate == identifier) {
            return std::string(line.substr(candidate.size() + 1));
        }
        rest = identifier < candidate ? rest.substr(0, start) : rest.substr(end + 1);
    }
    return std::string(identifier);
}

} // namespace exifcard
