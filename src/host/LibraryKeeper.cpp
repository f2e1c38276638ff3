#include "host/LibraryKeeper.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FileDescriptor.h"
#include "platform/foundation/Log.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/FolderWatch.h"
#include "platform/photos/import/Importer.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include <sys/eventfd.h>

namespace exifcard {
namespace {

/// Where not every folder can be watched, all are looked through so often.
constexpr std::chrono::seconds kTimeBetweenScans(30);
/// Otherwise as often as this, for what happens on network drives, of which the system tells nothing.
constexpr std::chrono::minutes kTimeBetweenChecks(10);
/// More often nobody sees a bar move.
constexpr std::chrono::milliseconds kTimeBetweenReports(100);

unsigned importJobs() {
    constexpr unsigned kMostJobs = 8;
    return std::clamp(std::thread::hardware_concurrency(), 1U, kMostJobs);
}

} // namespace

struct LibraryKeeper::State {
    QPointer<LibraryKeeper> keeper; ///< Main queue only.
    FileDescriptor wake = FileDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    std::mutex mutex;
    std::vector<std::string> newFolders; // Guarded by mutex.
    bool isEnding = false;               // Guarded by mutex.

    /// Nothing when the program ends; otherwise the folders that came since the last call.
    std::optional<std::vector<std::string>> takeNewFolders() {
        eventfd_t ignored = 0;
        eventfd_read(wake.number(), &ignored);
        const std::scoped_lock lock(mutex);
        return isEnding ? std::nullopt : std::optional(std::exchange(newFolders, {}));
    }

    static void tell(const std::shared_ptr<State>& state, std::function<void(LibraryKeeper&)> block) {
        DispatchQueue::mainQueue().async([state, block = std::move(block)] {
            if (state->keeper) {
                block(*state->keeper);
            }
        });
    }
    static ImportHandlers handlers(const std::shared_ptr<State>& state);
    /// The work on the queue, until the program ends.
    static void run(const std::shared_ptr<State>& state);
};

ImportHandlers LibraryKeeper::State::handlers(const std::shared_ptr<State>& state) {
    using Clock = std::chrono::steady_clock;
    ImportHandlers handlers;
    handlers.onProblem = [](const ImportProblem& problem) {
        if (isDebugLogWanted()) {
            debugLog(problem.path + " " + problem.cause);
        }
    };
    handlers.onNotice = [](std::string_view notice) { debugLog(notice); };
    handlers.onProgress = [state, next = Clock::time_point()](const ImportProgress& progress) mutable {
        if (Clock::now() >= next) {
            next = Clock::now() + kTimeBetweenReports;
            tell(state, [progress](LibraryKeeper& keeper) { emit keeper.progressed(progress); });
        }
    };
    return handlers;
}

void LibraryKeeper::State::run(const std::shared_ptr<State>& state) {
    Importer importer(PhotoCatalogue::shared(), handlers(state), importJobs());
    FolderWatch watch;
    const auto report = [&state](const ImportReport& result) {
        tell(state, [result](LibraryKeeper& keeper) { emit keeper.finished(result); });
    };
    std::vector<std::string> folders = importer.roots();
    tell(state, [hasFolders = !folders.empty()](LibraryKeeper& keeper) { emit keeper.started(hasFolders); });
    std::vector<std::string> unseen = folders;
    for (;;) {
        const auto added = state->takeNewFolders();
        if (!added) {
            return;
        }
        folders.insert(folders.end(), added->begin(), added->end());
        unseen.insert(unseen.end(), added->begin(), added->end());
        if (!unseen.empty()) {
            std::ranges::for_each(unseen, [&watch](const std::string& folder) { watch.addTree(folder); });
            report(importer.importTrees(std::exchange(unseen, {})));
        }
        std::optional<FolderWatch::Changes> changes;
        {
            const BlockingSection blocking;
            changes =
                watch.wait(state->wake.number(), watch.isComplete() ? kTimeBetweenChecks : kTimeBetweenScans);
        }
        if (changes && !folders.empty()) {
            const bool isAll = changes->isEmpty() || changes->isIncomplete;
            report(isAll ? importer.importTrees(folders)
                         : importer.update({changes->folders.begin(), changes->folders.end()},
                               {changes->trees.begin(), changes->trees.end()}));
        }
    }
}

LibraryKeeper::LibraryKeeper(QObject* parent) : QObject(parent), _state(std::make_shared<State>()) {
    _state->keeper = this;
}

LibraryKeeper::~LibraryKeeper() {
    {
        const std::scoped_lock lock(_state->mutex);
        _state->isEnding = true;
    }
    eventfd_write(_state->wake.number(), 1);
}

void LibraryKeeper::start() {
    DispatchQueue::globalQueue().async([state = _state] { State::run(state); });
}

void LibraryKeeper::addFolder(std::string folder) {
    {
        const std::scoped_lock lock(_state->mutex);
        _state->newFolders.push_back(std::move(folder));
    }
    eventfd_write(_state->wake.number(), 1);
}

} // namespace exifcard
