#include "cli/ImportOutput.h"

#include "cli/JsonWriter.h"
#include "cli/Session.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace exifcard {
namespace {

std::string summaryJSON(const ImportReport& report) {
    const auto number = [](std::size_t count) { return static_cast<std::int64_t>(count); };
    JsonWriter json;
    json.beginObject();
    json.key("added").integer(number(report.assets.added));
    json.key("changed").integer(number(report.assets.changed));
    json.key("moved").integer(number(report.assets.moved));
    json.key("returned").integer(number(report.assets.returned));
    json.key("vanished").integer(number(report.assets.vanished));
    json.key("unchangedFiles").integer(number(report.unchangedFiles));
    json.key("problems").integer(number(report.problems)).endObject();
    return json.take() + "\n";
}

} // namespace

std::string canonicalFolder(const std::string& name) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path path = fs::weakly_canonical(fs::absolute(name, error), error);
    if (error) {
        path = fs::absolute(name, error).lexically_normal();
    }
    std::string text = path.string();
    if (text.size() > 1 && text.ends_with('/')) {
        text.pop_back();
    }
    return text;
}

ImportHandlers importHandlers(Session& session, ImportProgressLine& progress) {
    const auto onProblem = [&session, &progress](const ImportProblem& problem) {
        if (session.options().isJSON) {
            JsonWriter json;
            json.beginObject().file(problem.path).key("error").text(problem.cause).endObject();
            session.print(json.take() + "\n");
            session.countFailure();
        } else {
            progress.clear();
            session.fail(fmt::format("cannot read {}: {}", problem.path, problem.cause));
        }
    };
    const auto onNotice = [&session, &progress](std::string_view notice) {
        progress.clear();
        session.note(notice);
    };
    return {.onProblem = onProblem,
        .onNotice = onNotice,
        .onProgress = [&progress](const ImportProgress& state) { progress.show(state); }};
}

std::string importSummary(const ImportReport& report, bool isJSON) {
    if (isJSON) {
        return summaryJSON(report);
    }
    struct Part {
        std::size_t count;
        std::string_view text;
    };
    const Part parts[] = {
        {report.assets.added, "added"},
        {report.assets.changed, "changed"},
        {report.assets.moved, "moved"},
        {report.assets.returned, "back again"},
        {report.assets.vanished, "gone"},
    };
    std::string text;
    for (const Part& part : parts) {
        if (part.count > 0) {
            text += fmt::format("{}{} {}", text.empty() ? "" : ", ", part.count, part.text);
        }
    }
    if (report.unchangedFiles == 0) {
        text = text.empty() ? (report.problems == 0 ? "No photos or videos there" : "Nothing new") : text;
        return text + "\n";
    }
    const std::string_view noun = report.unchangedFiles == 1 ? "file" : "files";
    return fmt::format(
        "{}; {} {} unchanged\n", text.empty() ? "Nothing new" : text, report.unchangedFiles, noun);
}

} // namespace exifcard
