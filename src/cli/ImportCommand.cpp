#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/ImportOutput.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "platform/foundation/FileHeap.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/Importer.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace exifcard {
namespace {

struct ImportOptions {
    std::vector<std::string> folders;
    bool isDryRun = false;
    bool forgetsMissing = false;
};

/// One line of what an import would do: "new      /photos/a.heic".
std::string planLine(std::string_view action, const std::string& path, bool isJSON) {
    if (!isJSON) {
        return fmt::format("{:<8} {}\n", action, displayLine(path));
    }
    JsonWriter json;
    json.beginObject().file(path).key("action").text(action).endObject();
    return json.take() + "\n";
}

ExitStatus showPlan(const ImportPlan& plan, Session& session) {
    const bool isJSON = session.options().isJSON;
    for (const PlannedGroup& planned : plan.groups) {
        for (const ScannedFile& file : planned.group.files) {
            const std::string path = plan.folders[planned.folder] + "/" + file.name;
            session.print(planLine(planned.isNew ? "new" : "changed", path, isJSON));
        }
    }
    for (const MissingFile& missing : plan.missing) {
        session.print(planLine("gone", missing.folder + "/" + missing.file.name, isJSON));
    }
    if (!isJSON) {
        session.print(fmt::format("{} files to read, {} gone, {} unchanged; nothing was written\n",
            plan.fileCount, plan.missing.size(), plan.unchangedCount));
    }
    return session.status();
}

std::string summaryOf(const ImportReport& report, const ImportOptions& options, bool isJSON) {
    const bool isNothingForgotten = options.forgetsMissing && !report.hasChanges();
    return isNothingForgotten && !isJSON ? "Nothing to forget\n" : importSummary(report, isJSON);
}

ExitStatus importFolders(const ImportOptions& options, Session& session) {
    std::vector<std::string> folders;
    for (const std::string& name : options.folders) {
        folders.push_back(canonicalFolder(name));
    }
    ImportProgressLine progress(!session.options().isQuiet);
    keepMemoryBetweenFiles();
    Importer importer(PhotoCatalogue::shared(), importHandlers(session, progress), session.options().jobs);
    if (options.isDryRun) {
        const ImportPlan plan =
            options.forgetsMissing ? importer.planToForget(folders) : importer.plan(folders);
        progress.clear();
        if (plan.error) {
            session.fail(*plan.error);
            return session.status();
        }
        return showPlan(plan, session);
    }
    const ImportReport report =
        options.forgetsMissing ? importer.forgetMissing(folders) : importer.importTrees(std::move(folders));
    progress.clear();
    if (report.error) {
        session.fail(*report.error);
    } else {
        session.print(summaryOf(report, options, session.options().isJSON));
    }
    return session.status();
}

CommandAction declareImport(CommandOptions& command) {
    auto options = std::make_shared<ImportOptions>();
    command.value("FOLDER", options->folders, "The folders; all below them is taken too")
        .required()
        .named("FOLDER");
    command.flag("--dry-run", options->isDryRun, "Only tell what would be done");
    command.flag("--forget-missing", options->forgetsMissing,
        "Take nothing in; forget what is not there, also of drives that are not mounted");
    return [options](Session& session) { return importFolders(*options, session); };
}

} // namespace

const Command kImportCommand = {
    .name = "import",
    .summary = "Take folders into the photo library, or look through them again",
    .examples = R"(All photos and videos of a folder, each folder in it as an album:
  exifcard import ~/Pictures
What has changed since then, without taking it in:
  exifcard import --dry-run ~/Pictures
A drive that never comes back, or a folder that was taken away:
  exifcard import --forget-missing ~/Pictures/OldDrive)",
    .declare = declareImport,
};

} // namespace exifcard
