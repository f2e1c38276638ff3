#include "cli/Session.h"

#include "cli/DisplayText.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

#include <unistd.h>

namespace exifcard {
namespace {

/// Whether everything was written; otherwise `errno` tells why.
bool writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(file, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace

void Session::print(std::string_view result) {
    if (_isOutputBroken || writeAll(STDOUT_FILENO, result)) {
        return;
    }
    const std::string cause = std::generic_category().message(errno);
    _isOutputBroken = true;
    fail(fmt::format("cannot write the results: {}", cause));
}

void Session::fail(std::string_view message) {
    _hasFailed = true;
    note(message);
}

void Session::note(std::string_view message) const {
    // Nobody is left to be told when this fails too.
    static_cast<void>(writeAll(STDERR_FILENO, fmt::format("exifcard: {}\n", displayLine(message))));
}

void Session::quote(std::string_view line) const {
    static_cast<void>(writeAll(STDERR_FILENO, fmt::format("  {}\n", line)));
}

ExitStatus Session::refuse(std::string_view message) {
    fail(message);
    return ExitStatus::WrongUsage;
}

} // namespace exifcard
