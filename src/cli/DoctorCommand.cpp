#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/DisplayText.h"
#include "cli/JsonWriter.h"
#include "cli/Session.h"
#include "cli/TextTable.h"
#include "platform/foundation/Data.h"
#include "platform/foundation/FileFault.h"
#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Identifiers.h"
#include "platform/foundation/PropertyList.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/photos/CatalogueConnections.h"
#include "platform/photos/PHAsset.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/Importer.h"
#include "platform/photos/import/ScannedFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace exifcard {
namespace {

/// What was found of one thing.
struct Finding {
    std::string what;        ///< "catalogue"
    std::string state;       ///< "108 photos and videos"
    std::string advice = {}; ///< How to mend it; empty where nothing is wrong.
};

Finding catalogueFinding() {
    const auto catalogue = PhotoCatalogue::shared();
    if (const auto error = catalogue->error()) {
        return {"catalogue", *error,
            "mend that, or move the file away; exifcard import on your folders then begins a new one"};
    }
    const auto database = catalogue->connections().reader(CatalogueConnections::Failures::ToldByCaller);
    if (!database) {
        return {"catalogue", "none yet; exifcard import FOLDER begins it"};
    }
    auto check = database->query("PRAGMA quick_check(1)");
    const std::string answer = check.step() ? check.text(0).value_or("") : "cannot be checked";
    if (answer != "ok") {
        return {"catalogue", fmt::format("{} is damaged: {}", catalogue->file(), answer),
            "run exifcard import on your folders: it begins the catalogue anew"};
    }
    if (catalogue->needsRebuild()) {
        return {"catalogue", "was lost and begun anew", "run exifcard import on any of your folders"};
    }
    return {"catalogue", fmt::format("{} photos and videos", PHAsset::fetchAssetsWithOptions()->count())};
}

std::vector<Finding> rootFindings() {
    std::vector<Finding> findings;
    const auto catalogue = PhotoCatalogue::shared();
    if (isGone(catalogue->file()) || catalogue->error()) {
        return findings;
    }
    for (const std::string& root : Importer(catalogue, {}, 1).roots()) {
        if (isFolderThere(root)) {
            findings.push_back({"folder", root});
        } else {
            findings.push_back({"folder", root + " is not there",
                "plug in its drive, or forget it with exifcard import --forget-missing FOLDER; its photos are "
                "kept until then"});
        }
    }
    return findings;
}

Finding settingsFinding() {
    const std::string path = UserDefaults::initWithSuiteName(kApplicationGroup)->path();
    if (isGone(path)) {
        return {"settings", "all as they were at first"};
    }
    if (const std::string fault = faultOfFile(path); !fault.empty()) {
        return {"settings", fmt::format("{}: {}", path, fault), "give yourself the right to read it"};
    }
    const auto content = Data::mappedFile(path);
    if (!content || (!content->empty() && !propertylist::read(*content))) {
        return {"settings", path + " is no property list", "move it away; all settings are then as at first"};
    }
    return {"settings", path};
}

/// The folder, or what of the way to it there is.
std::string existingPart(std::string folder) {
    while (folder.size() > 1 && isGone(folder)) {
        folder = std::filesystem::path(folder).parent_path().string();
    }
    return folder;
}

Finding folderFinding(const char* what, const std::string& folder) {
    const std::string existing = existingPart(folder);
    if (access(existing.c_str(), W_OK | X_OK) != 0) {
        return {what, existing + " cannot be written", "give yourself the right to write there"};
    }
    return {what, folder};
}

Finding moduleFinding(const char* what, const char* module) {
    const std::string path = modulePath(module);
    return path.empty() ? Finding{what, "its part is missing", "build or install exifcard again"}
                        : Finding{what, "ready"};
}

Finding helperFinding() {
    const char* const path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const std::string program = std::string(rest.substr(0, end)) + "/rclone";
        if (access(program.c_str(), X_OK) == 0) {
            return {"rclone", program};
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {"rclone", "missing; needed for originals that lie elsewhere only"};
}

std::vector<Finding> allFindings() {
    std::vector<Finding> findings = {catalogueFinding()};
    for (Finding& finding : rootFindings()) {
        findings.push_back(std::move(finding));
    }
    findings.push_back(settingsFinding());
    findings.push_back(folderFinding("data", dataFolder()));
    findings.push_back(folderFinding("configuration", configurationFolder()));
    findings.push_back(folderFinding("cache", cacheFolder()));
    findings.push_back(moduleFinding("pictures", "pixels"));
    findings.push_back(moduleFinding("videos", "video"));
    findings.push_back(helperFinding());
    return findings;
}

ExitStatus examine(Session& session) {
    TextTable table;
    std::string objects;
    for (const Finding& finding : allFindings()) {
        const bool isFine = finding.advice.empty();
        if (!isFine) {
            session.countFailure();
        }
        JsonWriter json;
        json.beginObject().key("what").text(finding.what).key("isFine").boolean(isFine);
        json.key("state").text(finding.state);
        json.key("advice").textOrNull(isFine ? std::nullopt : std::optional(finding.advice)).endObject();
        objects += json.take() + "\n";
        table.addRow({isFine ? "ok" : "wrong", finding.what,
            isFine ? finding.state : finding.state + "\n→ " + finding.advice});
    }
    session.print(session.options().isJSON ? objects : table.text(session.options().usesColor));
    return session.status();
}

CommandAction declareDoctor(CommandOptions& /*command*/) {
    return examine;
}

} // namespace

const Command kDoctorCommand = {
    .name = "doctor",
    .summary = "Check the catalogue, the settings and what is needed, and tell how to mend it",
    .examples = "What is wrong:\n  exifcard doctor",
    .declare = declareDoctor,
};

} // namespace exifcard
