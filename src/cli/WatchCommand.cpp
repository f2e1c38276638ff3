#include "cli/CommandOptions.h"
#include "cli/Commands.h"
#include "cli/ImportOutput.h"
#include "cli/Session.h"
#include "platform/photos/PhotoCatalogue.h"
#include "platform/photos/import/FolderWatch.h"
#include "platform/photos/import/Importer.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <signal.h>
#include <sys/signalfd.h>

namespace exifcard {
namespace {

/// Where not every folder can be watched, all are looked through so often.
constexpr std::chrono::seconds kTimeBetweenScans(30);
/// Otherwise as often as this, for what happens on network drives, of which the system tells nothing.
constexpr std::chrono::minutes kTimeBetweenChecks(10);

/// Becomes readable when the user or the system asks the program to end.
FileDescriptor stopDescriptor() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return FileDescriptor(signalfd(-1, &signals, SFD_CLOEXEC));
}

class Watching {
public:
    Watching(Session& session, std::vector<std::string> folders)
        : _session(session)
        , _folders(std::move(folders))
        , _progress(!session.options().isQuiet)
        , _importer(PhotoCatalogue::shared(), importHandlers(session, _progress), session.options().jobs) {}

    ExitStatus run(int stop) {
        if (_folders.empty()) {
            _folders = _importer.roots();
        }
        if (_folders.empty()) {
            return _session.refuse("the library has no folders yet; exifcard import FOLDER takes one in");
        }
        for (const std::string& folder : _folders) {
            _watch.addTree(folder);
        }
        tellIncompleteness();
        bool goesOn = tell(_importer.importTrees(_folders), /*isFirst=*/true);
        while (goesOn) {
            const auto changes =
                _watch.wait(stop, _watch.isComplete() ? kTimeBetweenChecks : kTimeBetweenScans);
            goesOn = changes && tell(take(*changes), /*isFirst=*/false);
        }
        return _session.status();
    }

private:
    ImportReport take(const FolderWatch::Changes& changes) {
        tellIncompleteness();
        if (changes.isEmpty() || changes.isIncomplete) {
            return _importer.importTrees(_folders);
        }
        return _importer.update(
            {changes.folders.begin(), changes.folders.end()}, {changes.trees.begin(), changes.trees.end()});
    }

    /// False when the library cannot be written.
    bool tell(const ImportReport& report, bool isFirst) {
        _progress.clear();
        if (report.error) {
            _session.fail(*report.error);
            return false;
        }
        if (isFirst || report.hasChanges()) {
            _session.print(importSummary(report, _session.options().isJSON));
        }
        return !_session.isOutputBroken();
    }

    void tellIncompleteness() {
        if (!_watch.isComplete() && !_hasToldIncompleteness) {
            _hasToldIncompleteness = true;
            _session.note(fmt::format("the system watches no more folders (see fs.inotify.max_user_watches); "
                                      "all are looked through every {} seconds instead",
                kTimeBetweenScans.count()));
        }
    }

    Session& _session;
    std::vector<std::string> _folders;
    ImportProgressLine _progress;
    Importer _importer;
    FolderWatch _watch;
    bool _hasToldIncompleteness = false;
};

CommandAction declareWatch(CommandOptions& command) {
    auto names = std::make_shared<std::vector<std::string>>();
    command.value("FOLDER", *names, "The folders; default: all that the library has").named("FOLDER");
    return [names](Session& session) {
        const FileDescriptor stop = stopDescriptor(); // Before there are threads that a signal could reach.
        std::vector<std::string> folders;
        std::ranges::transform(*names, std::back_inserter(folders), canonicalFolder);
        return Watching(session, std::move(folders)).run(stop.number());
    };
}

} // namespace

const Command kWatchCommand = {
    .name = "watch",
    .summary = "Follow folders: take in what comes and changes, until interrupted",
    .examples = R"(All folders of the library:
  exifcard watch
A folder that another program fills:
  exifcard watch ~/Pictures/Phone)",
    .declare = declareWatch,
};

} // namespace exifcard
