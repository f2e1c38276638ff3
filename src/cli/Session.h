#pragma once

#include "cli/Command.h"

#include <atomic>
#include <string>
#include <string_view>

namespace exifcard {

/// What the options of every command say, as a running command sees it.
struct SessionOptions {
    bool isJSON = false;
    bool isQuiet = false;
    bool usesColor = false;
    unsigned jobs = 1; ///< At least 1.
};

/// One run of the program: its options and where its results and failures go.
/// Used by one thread at a time.
class Session {
public:
    explicit Session(SessionOptions options) : _options(options) {}

    const SessionOptions& options() const { return _options; }

    /// Writes a result to standard output at once. Where that fails, the rest is dropped and the run counts
    /// as failed.
    void print(std::string_view result);

    /// Whether nobody gets any more results. Any thread.
    bool isOutputBroken() const { return _isOutputBroken; }

    /// One line about what went wrong ("cannot read a.jpg: no such file"); the run counts as failed.
    void fail(std::string_view message);

    /// One line that is neither a result nor a failure.
    void note(std::string_view message) const;
    /// A line that belongs to the one before, set off from it; as it stands, so safe to show.
    void quote(std::string_view line) const;

    /// The run counts as failed; what went wrong stands in the results.
    void countFailure() { _hasFailed = true; }

    /// One line about what was asked wrongly. Answers the status to end with.
    ExitStatus refuse(std::string_view message);

    /// What the run ends with.
    ExitStatus status() const { return _hasFailed ? ExitStatus::SomethingFailed : ExitStatus::Done; }

private:
    SessionOptions _options;
    bool _hasFailed = false;
    std::atomic<bool> _isOutputBroken = false;
};

} // namespace exifcard
