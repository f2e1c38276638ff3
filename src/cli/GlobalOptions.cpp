#include "cli/GlobalOptions.h"

#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "platform/foundation/Log.h"
#include "platform/uivalues/UIScreen.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <thread>

#include <unistd.h>

namespace exifcard {
namespace {

/// More threads than this only wait for each other and for the disk.
constexpr unsigned kMostJobs = 64;

struct LogChoice {
    std::string_view name;
    LogTarget target;
};

constexpr LogChoice kLogChoices[] = {
    {"debug", LogTarget::StandardError},
    {"debug=system", LogTarget::System},
};

bool isColorWanted(std::string_view choice) {
    if (choice != "auto") {
        return choice == "always";
    }
    const char* const noColor = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    const bool isRefused = noColor != nullptr && *noColor != '\0';
    const bool isDumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return !isRefused && !isDumb && isatty(STDOUT_FILENO) == 1;
}

std::string screenFault(const std::string& text) {
    return UIScreen::screenFromText(text) ? "" : "is no screen such as 390x844@3: " + text;
}

} // namespace

std::shared_ptr<GlobalOptions> declareGlobalOptions(CommandOptions& command) {
    auto options = std::make_shared<GlobalOptions>();
    command.flag("--json", options->isJSON, "Print JSON, one object a line");
    command.flag("-q,--quiet", options->isQuiet, "Show no progress");
    command.flag("--color{always}", options->color, "Colour the text, or never do")
        .limitedTo({"auto", "always", "never"});
    command.value("-j,--jobs", options->jobs, "Work on so many files at once; default: one for each core")
        .named("N")
        .between(1, kMostJobs);
    command.value("--screen", options->screen, "Take the screen to be this large, in points and scale")
        .named("WxH@S")
        .checkedBy(screenFault);
    command.value("--log", options->log, "Write debug lines to standard error or the system log")
        .limitedTo({"debug", "debug=system"});
    return options;
}

SessionOptions applyGlobalOptions(const GlobalOptions& options) {
    for (const LogChoice& choice : kLogChoices) {
        if (options.log == choice.name) {
            setDebugLogTarget(choice.target);
        }
    }
    if (const auto screen = UIScreen::screenFromText(options.screen)) {
        UIScreen::setMainScreen(*screen);
    }
    const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 1U, kMostJobs);
    return {.isJSON = options.isJSON,
        .isQuiet = options.isQuiet,
        .usesColor = !options.isJSON && isColorWanted(options.color),
        .jobs = options.jobs == 0 ? cores : options.jobs};
}

} // namespace exifcard
