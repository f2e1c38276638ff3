#include "cli/ImportProgressLine.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace exifcard {
namespace {

constexpr auto kTimeBetweenDrawings = std::chrono::milliseconds(100);
constexpr std::size_t kBarWidth = 20;
constexpr double kBytesPerMegabyte = 1e6;
/// Before that nobody can tell how fast it goes.
constexpr double kShortestMeasurement = 0.5;

std::string bar(double fraction) {
    const auto filled = static_cast<std::size_t>(std::clamp(fraction, 0.0, 1.0) * kBarWidth);
    std::string text(filled, '=');
    if (filled < kBarWidth) {
        text += '>';
    }
    text.resize(kBarWidth, ' ');
    return "[" + text + "]";
}

std::string timeLeft(double seconds) {
    const auto whole = static_cast<long>(seconds + 0.5);
    return whole < 3600 ? fmt::format("{}:{:02} left", whole / 60, whole % 60)
                        : fmt::format("{}:{:02}:{:02} left", whole / 3600, whole / 60 % 60, whole % 60);
}

std::size_t terminalWidth() {
    winsize size{};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

} // namespace

std::string importProgressText(const ImportProgress& progress, double seconds) {
    if (progress.isScanning) {
        return fmt::format("Looking for photos: {} files", progress.fileCount);
    }
    const double fraction = progress.fileCount == 0 ? 1
                                                    : static_cast<double>(progress.filesDone) /
                                                          static_cast<double>(progress.fileCount);
    const double megabytes = static_cast<double>(progress.bytesDone) / kBytesPerMegabyte;
    std::string text =
        fmt::format("{} {}/{} files, {:.0f}/{:.0f} MB", bar(fraction), progress.filesDone,
            progress.fileCount, megabytes, static_cast<double>(progress.sizeInBytes) / kBytesPerMegabyte);
    if (seconds >= kShortestMeasurement && fraction > 0) {
        // Most of a large file is never read, so that files tell the time left, not bytes.
        text += fmt::format(", {:.0f} MB/s, {}", megabytes / seconds, timeLeft(seconds / fraction - seconds));
    }
    return text;
}

ImportProgressLine::ImportProgressLine(bool isWanted) : _isWanted(isWanted && isatty(STDERR_FILENO) == 1) {
}

void ImportProgressLine::show(const ImportProgress& progress) {
    const auto now = Clock::now();
    if (!progress.isScanning && !_isReading) {
        _isReading = true;
        _readingSince = now;
    }
    if (!_isWanted || now < _nextDrawing) {
        return;
    }
    _nextDrawing = now + kTimeBetweenDrawings;
    _isShown = true;
    const std::chrono::duration<double> elapsed = now - _readingSince;
    const std::string text = importProgressText(progress, elapsed.count());
    fmt::print(stderr, "\r{}\x1b[K", text.substr(0, terminalWidth() - 1));
}

void ImportProgressLine::clear() {
    if (_isShown) {
        fmt::print(stderr, "\r\x1b[K");
        _isShown = false;
    }
}

} // namespace exifcard
