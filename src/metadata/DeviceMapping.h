#pragma once

#include <string>
#include <string_view>

namespace exifcard {

/// The names under which phones and tablets are sold.
struct DeviceMapping {
    /// The name of the device that writes `identifier` into its model tag:
    /// "iPad1,1" is "iPad". Capitals count; a text that is no identifier is answered as it is.
    static std::string getDeviceNameFromMachineIdentifier(std::string_view identifier);
};

} // namespace exifcard
