#include "cli/FileCommand.h"

#include "cli/Choices.h"
#include "cli/DisplayText.h"
#include "cli/InputNames.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "cli/TextTable.h"

#include <fmt/format.h>

#include <algorithm>

namespace exifcard {
namespace {

/// Prints results one after the other, with headings where there are several files.
class ResultPrinter {
public:
    ResultPrinter(Session& session, bool hasHeadings) : _session(session), _hasHeadings(hasHeadings) {}

    void print(const FileResult& result) {
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
            _session.fail(result.failure);
        }
    }

private:
    Session& _session;
    bool _hasHeadings;
    bool _isFirst = true;
};

} // namespace

void declareFiles(CLI::App& app, FileArguments& arguments) {
    app.add_option("FILE", arguments.names, "The files; - reads their names from standard input, one a line")
        ->type_name(kFileTypeName);
    app.add_flag("-0,--null", arguments.isNulSeparated, "Names on standard input end with NUL");
}

ExitStatus runOverFiles(const FileArguments& arguments, Session& session, const FileWork& work) {
    InputNames names(arguments.names, arguments.isNulSeparated ? '\0' : '\n');
    const auto count = names.count();
    if (count == 0U) {
        return session.refuse("which files?");
    }
    const SessionOptions& options = session.options();
    const auto jobs =
        static_cast<unsigned>(std::min<std::size_t>(options.jobs, count.value_or(options.jobs)));
    const bool hasHeadings = !options.isJSON && count != 1U;
    ResultPrinter printer(session, hasHeadings);
    const auto workWithHeading = [&](const std::string& name) {
        FileResult result = work(name);
        if (hasHeadings && result.failure.empty()) {
            result.output =
                styled(displayLine(name), TextStyle::Bold, options.usesColor) + "\n" + result.output;
        }
        return result;
    };
    runInOrder(jobs, {.take = [&names] { return names.next(); },
                         .work = workWithHeading,
                         .hand = [&printer](const FileResult& result) { printer.print(result); }});
    return session.status();
}

FileResult failedFile(const std::string& name, const std::string& cause, bool isJSON) {
    FileResult result{.failure = fmt::format("cannot read {}: {}", name, cause)};
    if (isJSON) {
        result.output =
            JsonWriter().beginObject().file(name).key("error").text(cause).endObject().take() + "\n";
    }
    return result;
}

} // namespace exifcard
