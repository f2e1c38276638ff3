#pragma once

#include <stdexcept>
#include <string>

namespace exifcard {

/// What the platform layer throws where the platform raises: a wrong argument,
/// an archive that is none. Caught by this type and only where a caller is told to.
class PlatformException : public std::runtime_error {
public:
    /// @param name    The platform's name of the exception ("NSInvalidArgumentException").
    /// @param reason  One sentence for the log.
    PlatformException(std::string name, const std::string& reason)
        : std::runtime_error(name + ": " + reason)
        , _name(std::move(name)) {}

    const std::string& name() const { return _name; }

private:
    std::string _name;
};

} // namespace exifcard
