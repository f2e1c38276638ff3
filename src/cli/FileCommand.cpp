#include "cli/FileCommand.h"

#include "cli/AssetNames.h"
#include "cli/Choices.h"
#include "cli/CommandOptions.h"
#include "cli/DisplayText.h"
#include "cli/InputNames.h"
#include "cli/JsonWriter.h"
#include "cli/Progress.h"
#include "cli/Session.h"
#include "cli/TextTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace exifcard {
namespace {

/// Prints results one after the other, with headings where there are several files.
class ResultPrinter {
public:
    ResultPrinter(Session& session, std::optional<std::size_t> count)
        : _session(session)
        , _progress(!session.options().isQuiet, count)
        , _hasHeadings(!session.options().isJSON && count != 1U) {}

    bool hasHeadings() const { return _hasHeadings; }

    void print(const FileResult& result) {
        _progress.advance();
        if (!result.output.empty()) {
            _session.print(_isFirst || !_hasHeadings ? result.output : "\n" + result.output);
            _isFirst = false;
        }
        if (result.failure.empty()) {
            return;
        }
        if (_session.options().isJSON) {
            _session.countFailure(); // The object tells it.
        } else {
            _progress.clear();
            _session.fail(result.failure);
        }
    }

private:
    Session& _session;
    Progress _progress;
    bool _hasHeadings;
    bool _isFirst = true;
};

InputNames inputNames(const FileArguments& arguments) {
    return {arguments.names, arguments.isNulSeparated ? '\0' : '\n'};
}

} // namespace

void declareFiles(CommandOptions& command, FileArguments& arguments) {
    command
        .value("FILE", arguments.names,
            "Files or assets of the library; - reads their names from standard input, one a line")
        .named(kFileTypeName);
    command.flag("-0,--null", arguments.isNulSeparated, "Names on standard input end with NUL");
}

bool isOneFile(const FileArguments& arguments) {
    return inputNames(arguments).count() == 1U;
}

ExitStatus runOverFiles(
    const FileArguments& arguments, Session& session, const FileWork& work, unsigned mostJobs) {
    InputNames names = inputNames(arguments);
    const auto count = names.count();
    if (count == 0U) {
        return session.refuse("which files?");
    }
    const SessionOptions& options = session.options();
    const unsigned wantedJobs = std::min(options.jobs, mostJobs);
    const auto jobs = static_cast<unsigned>(std::min<std::size_t>(wantedJobs, count.value_or(wantedJobs)));
    ResultPrinter printer(session, count);
    const auto workWithHeading = [&](const std::string& name) {
        const NamedFile file = fileNamed(name);
        FileResult result =
            file.fault ? failedFile(name, "look up", *file.fault, options.isJSON) : work(file.path);
        if (printer.hasHeadings() && result.failure.empty()) {
            result.output =
                styled(displayLine(file.path), TextStyle::Bold, options.usesColor) + "\n" + result.output;
        }
        return result;
    };
    runInOrder(jobs, {.take = [&] { return session.isOutputBroken() ? std::nullopt : names.next(); },
                         .work = workWithHeading,
                         .hand = [&printer](const FileResult& result) { printer.print(result); }});
    return session.status();
}

FileResult failedFile(
    const std::string& name, std::string_view action, const std::string& cause, bool isJSON) {
    FileResult result{.failure = fmt::format("cannot {} {}: {}", action, name, cause)};
    if (isJSON) {
        result.output =
            JsonWriter().beginObject().file(name).key("error").text(cause).endObject().take() + "\n";
    }
    return result;
}

} // namespace exifcard
