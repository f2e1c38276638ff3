#include "cli/InputNames.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string_view>

#include <unistd.h>

namespace exifcard {
namespace {

constexpr std::string_view kStandardInput = "-";

/// The system opens no longer name, so no more of one is kept: an input without an end takes no memory.
constexpr std::size_t kLongestName = PATH_MAX;

constexpr std::size_t kBufferSize = 1 << 16;

} // namespace

InputNames::InputNames(std::vector<std::string> arguments, char separator)
    : _arguments(std::move(arguments))
    , _separator(separator) {
    if (separator == '\0' && std::ranges::count(_arguments, kStandardInput) == 0) {
        _arguments.emplace_back(kStandardInput); // Asking for NULs asks for standard input.
    }
}

std::optional<std::string> InputNames::next() {
    while (_position < _arguments.size()) {
        if (_arguments[_position] != kStandardInput) {
            return _arguments[_position++];
        }
        if (auto name = nextFromStandardInput()) {
            return name;
        }
        ++_position;
    }
    return std::nullopt;
}

std::optional<std::size_t> InputNames::count() const {
    if (std::ranges::count(_arguments, kStandardInput) > 0) {
        return std::nullopt;
    }
    return _arguments.size();
}

std::optional<std::string> InputNames::nextFromStandardInput() {
    std::string name;
    while (_bufferPosition < _buffer.size() || fillBuffer()) {
        const std::size_t end = std::min(_buffer.find(_separator, _bufferPosition), _buffer.size());
        const std::size_t room = kLongestName - name.size();
        name.append(_buffer, _bufferPosition, std::min(end - _bufferPosition, room));
        _bufferPosition = end;
        if (end == _buffer.size()) {
            continue;
        }
        ++_bufferPosition;
        if (!name.empty()) {
            return name;
        }
    }
    return name.empty() ? std::nullopt : std::optional(name);
}

bool InputNames::fillBuffer() {
    _buffer.resize(kBufferSize);
    _bufferPosition = 0;
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, _buffer.data(), _buffer.size());
    } while (count < 0 && errno == EINTR);
    _buffer.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

} // namespace exifcard
