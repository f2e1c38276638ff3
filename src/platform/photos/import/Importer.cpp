#include "platform/photos/import/Importer.h"

#include "platform/photos/CatalogueWriter.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/AssetReading.h"
#include "platform/photos/import/ImportLock.h"
#include "platform/photos/import/LibraryPlaces.h"
#include "platform/photos/import/ReadAhead.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace exifcard {
namespace {

/// Without the folders that lie in others of them.
std::vector<std::string> outermost(std::vector<std::string> folders) {
    std::ranges::sort(folders);
    std::vector<std::string> kept;
    for (std::string& folder : folders) {
        const auto holds = [&folder](const std::string& other) { return isWithin(folder, other); };
        if (std::ranges::none_of(kept, holds)) {
            kept.push_back(std::move(folder));
        }
    }
    return kept;
}

void addGoneForGood(ImportPlanner& planner, const std::vector<std::string>& folders) {
    for (const std::string& folder : outermost(folders)) {
        planner.addGoneForGood(folder);
    }
}

} // namespace

Importer::Importer(std::shared_ptr<PhotoCatalogue> catalogue, ImportHandlers handlers, unsigned jobs)
    : _catalogue(std::move(catalogue))
    , _handlers(std::move(handlers))
    , _jobs(jobs) {
}

std::vector<std::string> Importer::roots() {
    CatalogueWriter writer(_catalogue);
    const LibraryPlaces places(&writer);
    std::vector<std::string> paths;
    for (const LibraryRoot& root : places.roots()) {
        if (isFolderThere(root.path) || places.holdsFilesBelow(root.path)) {
            paths.push_back(root.path);
        }
    }
    return paths;
}

ImportReport Importer::importTrees(std::vector<std::string> folders) {
    return run([&](ImportPlanner& planner, LibraryPlaces& places) {
        std::ranges::sort(folders); // One that lies in another comes after it and is no root of its own.
        for (const std::string& folder : folders) {
            if (isFolderThere(folder)) {
                places.addRoot(folder);
            }
        }
        _isRebuilding = _catalogue->needsRebuild();
        if (_isRebuilding) {
            for (const LibraryRoot& root : places.roots()) {
                folders.push_back(root.path);
            }
        }
        for (const std::string& folder : outermost(std::move(folders))) {
            addTree(planner, places, folder);
        }
    });
}

ImportReport Importer::update(
    const std::vector<std::string>& folders, const std::vector<std::string>& trees) {
    return run([&](ImportPlanner& planner, LibraryPlaces& places) {
        for (const std::string& tree : outermost(trees)) {
            if (isFolderThere(tree)) {
                places.addRoot(tree); // Where it was not there when it was asked for.
            }
            addTree(planner, places, tree);
        }
        for (const std::string& folder : folders) {
            planner.addFolder(folder);
        }
    });
}

ImportReport Importer::forgetMissing(const std::vector<std::string>& folders) {
    return write([&](CatalogueWriter& writer, LibraryPlaces& places, ImportReport& report) {
        ImportPlanner planner = plannerFor(&writer, places);
        addGoneForGood(planner, folders);
        ImportPlan plan = planner.take();
        AssetStore store(writer, places);
        store.forget(std::move(plan.missing));
        std::ranges::for_each(plan.goneFolders, [&](const std::string& folder) { places.remove(folder); });
        report.assets = store.counts();
    });
}

ImportPlan Importer::plan(const std::vector<std::string>& folders) {
    return planOf([&](ImportPlanner& planner, const LibraryPlaces& places) {
        for (const std::string& folder : outermost(folders)) {
            addTree(planner, places, folder);
        }
    });
}

ImportPlan Importer::planToForget(const std::vector<std::string>& folders) {
    return planOf(
        [&](ImportPlanner& planner, const LibraryPlaces& /*places*/) { addGoneForGood(planner, folders); });
}

ImportPlan Importer::planOf(const Choice& choose) {
    std::optional<CatalogueWriter> writer;
    if (!isGone(_catalogue->file())) {
        writer.emplace(_catalogue);
    }
    const LibraryPlaces places(writer ? &*writer : nullptr);
    ImportPlanner planner = plannerFor(writer ? &*writer : nullptr, places);
    choose(planner, places);
    ImportPlan plan = planner.take();
    plan.error = writer ? writer->error() : std::nullopt;
    return plan;
}

ImportReport Importer::write(
    const std::function<void(CatalogueWriter&, LibraryPlaces&, ImportReport&)>& work) {
    _problems = 0;
    const auto onWait = [this] { _handlers.onNotice("another import is running; waiting for it to end"); };
    const auto lock = ImportLock::take(_catalogue->folder(), onWait);
    if (!lock) {
        return {
            .error = fmt::format("cannot write in {}; check its rights and the disk", _catalogue->folder())};
    }
    CatalogueWriter writer(_catalogue);
    LibraryPlaces places(&writer);
    if (writer.error()) {
        return {.error = writer.error()};
    }
    ImportReport report;
    work(writer, places, report);
    writer.commit();
    report.problems = _problems;
    report.error = writer.error();
    return report;
}

ImportReport Importer::run(const std::function<void(ImportPlanner&, LibraryPlaces&)>& choose) {
    const ImportReport report =
        write([&](CatalogueWriter& writer, LibraryPlaces& places, ImportReport& told) {
            ImportPlanner planner = plannerFor(&writer, places);
            choose(planner, places);
            const ImportPlan plan = planner.take();
            noteMountPoints(plan, places);
            AssetStore store(writer, places);
            readAndStore(plan, store, writer);
            tellLostRoots(plan, places);
            store.forget(missingForSure(plan, places));
            for (const std::string& folder : plan.goneFolders) {
                const LibraryRoot* const root = places.rootOf(folder);
                if (root != nullptr && isFolderThere(root->path) && !places.isAway(folder)) {
                    places.remove(folder);
                }
            }
            told.assets = store.counts();
            told.unchangedFiles = plan.unchangedCount;
        });
    if (!report.error && std::exchange(_isRebuilding, false)) {
        _catalogue->finishRebuild();
    }
    return report;
}

void Importer::noteMountPoints(const ImportPlan& plan, LibraryPlaces& places) {
    for (const std::string& folder : plan.mountPoints) {
        places.noteMountPoint(folder, true);
    }
    for (const std::string& folder : plan.formerMountPoints) {
        places.noteMountPoint(folder, false);
    }
}

ImportPlanner Importer::plannerFor(CatalogueWriter* writer, const LibraryPlaces& places) {
    const auto onScan = [this](std::size_t fileCount) { _handlers.onProgress({.fileCount = fileCount}); };
    return {writer, places, [this](const ImportProblem& problem) { tellProblem(problem); }, onScan};
}

/// A tree of which the root is not there, or is empty, has an unplugged drive: nothing of it is forgotten.
void Importer::addTree(ImportPlanner& planner, const LibraryPlaces& places, const std::string& folder) {
    const LibraryRoot* const root = places.rootOf(folder);
    const std::string& top = root != nullptr ? root->path : folder;
    if (!isFolderThere(top)) {
        std::error_code error;
        std::string cause = std::filesystem::exists(top, error) ? "is no folder" : "no such folder";
        cause += root != nullptr ? "; what the library holds of it is kept" : "";
        tellProblem({top, cause});
    } else {
        planner.addTree(folder);
    }
}

void Importer::readAndStore(const ImportPlan& plan, AssetStore& store, CatalogueWriter& writer) {
    ImportProgress progress{
        .isScanning = false, .fileCount = plan.fileCount, .sizeInBytes = plan.sizeInBytes};
    std::atomic<bool> hasFailed = false;
    const auto read = [&](std::size_t position) {
        const PlannedGroup& planned = plan.groups[position];
        return readGroup(plan.folders[planned.folder], planned.group);
    };
    const auto take = [&](std::size_t position, const ReadGroup& group) {
        const PlannedGroup& planned = plan.groups[position];
        for (const ReadAsset& asset : group.assets) {
            store.store(asset, plan.folders[planned.folder]);
        }
        std::ranges::for_each(group.problems, [this](const auto& problem) { tellProblem(problem); });
        progress.filesDone += planned.group.files.size();
        progress.bytesDone += planned.group.sizeInBytes();
        _handlers.onProgress(progress);
        hasFailed = writer.error().has_value();
    };
    readAhead(_jobs, {.count = plan.groups.size(), .read = read, .take = take, .isStopped = [&hasFailed] {
                          return hasFailed.load();
                      }});
}

/// Those that were there when they were looked through.
void Importer::tellLostRoots(const ImportPlan& plan, const LibraryPlaces& places) {
    std::set<std::string> lost;
    const auto look = [&](const std::string& folder) {
        const LibraryRoot* const root = places.rootOf(folder);
        if (root != nullptr && !isFolderThere(root->path)) {
            lost.insert(root->path);
        }
    };
    std::ranges::for_each(plan.folders, look);
    std::ranges::for_each(plan.goneFolders, look);
    for (const std::string& root : lost) {
        tellProblem({root, "is no longer there; what the library holds of it is kept"});
    }
}

/// A drive that went away during the import took its files along; they are not gone.
std::vector<MissingFile> Importer::missingForSure(const ImportPlan& plan, const LibraryPlaces& places) {
    std::vector<MissingFile> missing = plan.missing;
    std::erase_if(missing, [&](const MissingFile& file) {
        const LibraryRoot* const root = places.rootOf(file.folder);
        return root == nullptr || !isFolderThere(root->path) || places.isAway(file.folder) ||
               !isGone(file.folder + "/" + file.file.name);
    });
    return missing;
}

void Importer::tellProblem(const ImportProblem& problem) {
    ++_problems;
    _handlers.onProblem(problem);
}

} // namespace exifcard
