#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace exifcard {

/// The names that a command works on: its arguments, and in place of each "-" the names that standard input
/// holds.
class InputNames {
public:
    /// @param separator  What ends a name on standard input: a line end or NUL.
    InputNames(std::vector<std::string> arguments, char separator);

    /// The next name; nothing at the end. Reads standard input only when it comes to that, name by name.
    std::optional<std::string> next();

    /// How many names there are, or nothing while standard input may hold any number.
    std::optional<std::size_t> count() const;

private:
    std::optional<std::string> nextFromStandardInput();
    bool fillBuffer();

    std::vector<std::string> _arguments;
    std::size_t _position = 0;
    char _separator;
    std::string _buffer;
    std::size_t _bufferPosition = 0;
};

} // namespace exifcard
