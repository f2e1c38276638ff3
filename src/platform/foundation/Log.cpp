#include "platform/foundation/Log.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/sinks/syslog_sink.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace exifcard {
namespace {

using Capture = std::function<void(std::string_view)>;

constexpr const char* kProgramName = "exifcard";

std::shared_ptr<spdlog::logger> makeLogger(spdlog::sink_ptr sink, const char* pattern) {
    auto logger = std::make_shared<spdlog::logger>(kProgramName, std::move(sink));
    logger->set_level(spdlog::level::debug);
    logger->flush_on(spdlog::level::debug);
    logger->set_pattern(pattern);
    return logger;
}

spdlog::logger& standardErrorLogger() {
    // Never destroyed: threads may still log while the program ends.
    static auto& logger = *new auto(makeLogger(std::make_shared<spdlog::sinks::stderr_sink_mt>(), "%n: %v"));
    return *logger;
}

spdlog::logger& systemLogger() {
    static auto& logger = *new auto(makeLogger(
        std::make_shared<spdlog::sinks::syslog_sink_mt>(kProgramName, LOG_PID, LOG_USER, false), "%v"));
    return *logger;
}

std::atomic<LogTarget> debugTarget = LogTarget::Nowhere;
std::atomic<bool> isCaptured = false;
std::mutex captureMutex;
std::shared_ptr<const Capture> currentCapture; // Guarded by captureMutex.

/// Whether a test took the line.
bool capture(std::string_view line) {
    if (!isCaptured.load(std::memory_order_acquire)) {
        return false;
    }
    std::shared_ptr<const Capture> handler;
    {
        const std::lock_guard lock(captureMutex);
        handler = currentCapture;
    }
    if (handler) {
        (*handler)(line);
    }
    return handler != nullptr;
}

/// Control characters spelled out, so that the name of a file can neither forge
/// a line of the log nor steer a terminal.
std::string printable(std::string_view line) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    text.reserve(line.size());
    for (const char character : line) {
        const auto code = static_cast<unsigned char>(character);
        if (code >= 0x20 && code != 0x7f) {
            text += character;
        } else {
            text += {'\\', 'x', kDigits[code >> 4U], kDigits[code & 0xfU]};
        }
    }
    return text;
}

void write(spdlog::level::level_enum level, std::string_view line) {
    const bool goesToSystem = debugTarget.load(std::memory_order_relaxed) == LogTarget::System;
    auto& logger = goesToSystem ? systemLogger() : standardErrorLogger();
    logger.log(level, spdlog::string_view_t(printable(line)));
}

} // namespace

void setDebugLogTarget(LogTarget target) {
    debugTarget.store(target, std::memory_order_relaxed);
}

bool isDebugLogWanted() {
    return debugTarget.load(std::memory_order_relaxed) != LogTarget::Nowhere ||
           isCaptured.load(std::memory_order_acquire);
}

void debugLog(std::string_view line) {
    if (!capture(line) && debugTarget.load(std::memory_order_relaxed) != LogTarget::Nowhere) {
        write(spdlog::level::debug, line);
    }
}

void debugLog(std::string_view format, std::initializer_list<FormatArgument> arguments) {
    if (isDebugLogWanted()) {
        debugLog(stringWithFormat(format, arguments));
    }
}

void errorLog(std::string_view line) {
    if (!capture(line)) {
        write(spdlog::level::err, line);
    }
}

void captureLog(std::function<void(std::string_view line)> capture) {
    const std::lock_guard lock(captureMutex);
    currentCapture = capture ? std::make_shared<const Capture>(std::move(capture)) : nullptr;
    isCaptured.store(currentCapture != nullptr, std::memory_order_release);
}

} // namespace exifcard
