#include "host/LibraryAccess.h"

#include "host/ChoiceSheet.h"
#include "host/LibraryKeeper.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/LocalizedString.h"
#include "platform/photos/import/Importer.h"
#include "platform/uikit/Text+Qt.h"
#include "screens/ListScreenRequests.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include <memory>
#include <mutex>

namespace exifcard {
namespace {

std::string picturesFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return folder.isEmpty() || folder == QDir::homePath() || !QFileInfo(folder).isDir()
               ? std::string()
               : textFromQString(folder);
}

/// Asks on the main queue and waits for the answer.
PHAuthorizationStatus waitForDecision(const QPointer<LibraryAccess>& access,
    const std::function<void(std::function<void(PHAuthorizationStatus)>)>& ask) {
    struct Answer {
        DispatchSemaphore given{0};
        PHAuthorizationStatus status = PHAuthorizationStatus::NotDetermined;
    };
    const auto answer = std::make_shared<Answer>();
    // Whoever holds this may still answer; a window that closes lets it go unanswered.
    std::shared_ptr<Answer> pending(answer.get(), [answer](Answer* given) { given->given.signal(); });
    DispatchQueue::mainQueue().async([access, ask, pending = std::move(pending)]() mutable {
        const auto answered = std::move(pending);
        if (access) {
            ask([answered](PHAuthorizationStatus status) { answered->status = status; });
        }
    });
    answer->given.wait();
    return answer->status;
}

} // namespace

LibraryAccess::LibraryAccess(QWidget& window)
    : QObject(&window)
    , _window(window)
    , _keeper(new LibraryKeeper(this)) {
    connect(_keeper, &LibraryKeeper::started, this, [this](bool hasFolders) {
        if (!hasFolders && !_isFolderNamed) {
            offerFolders();
        }
    });
    connect(_keeper, &LibraryKeeper::progressed, this, &LibraryAccess::importProgressed);
    connect(_keeper, &LibraryKeeper::finished, this, &LibraryAccess::importFinished);
    auto& center = NotificationCenter::defaultCenter();
    _observations.push_back(center.addObserver(
        kAddPhotosRequestedNotification, nullptr, [this](const Notification&) { offerFolders(); }));
    _observations.push_back(
        center.addObserver(kLibraryAccessRequestedNotification, nullptr, [this](const Notification&) {
            askForAccess([this](PHAuthorizationStatus status, const std::vector<std::string>& folders) {
                decide(status, folders);
                startKeeper();
            });
        }));
    PHPhotoLibrary::setAuthorizationQuestion([access = QPointer<LibraryAccess>(this),
                                                 isLeftOpen = _isLeftOpen] {
        // A screen may ask at the same time as the window; one answer is enough.
        static std::mutex mutex;
        const std::scoped_lock lock(mutex);
        if (const auto decided = PHPhotoLibrary::authorizationStatus();
            decided != PHAuthorizationStatus::NotDetermined || *isLeftOpen) {
            return decided;
        }
        return waitForDecision(access, [access](const std::function<void(PHAuthorizationStatus)>& answer) {
            access->askForAccess(
                [access, answer](PHAuthorizationStatus status, const std::vector<std::string>& folders) {
                    if (access) {
                        access->decide(status, folders);
                    }
                    answer(status);
                });
        });
    });
}

void LibraryAccess::decide(PHAuthorizationStatus status, const std::vector<std::string>& folders) {
    *_isLeftOpen = status == PHAuthorizationStatus::NotDetermined;
    if (!*_isLeftOpen) {
        PHPhotoLibrary::setAuthorization(status, folders);
    }
}

LibraryAccess::~LibraryAccess() {
    PHPhotoLibrary::setAuthorizationQuestion(nullptr);
}

ChoiceSheet* LibraryAccess::openSheet() const {
    return _sheet;
}

void LibraryAccess::start(const std::optional<std::string>& folder) {
    if (folder) {
        addNamedFolder(*folder);
        return;
    }
    if (PHPhotoLibrary::authorizationStatus() != PHAuthorizationStatus::NotDetermined) {
        startKeeper();
        return;
    }
    PHPhotoLibrary::requestAuthorization([access = QPointer<LibraryAccess>(this)](PHAuthorizationStatus) {
        DispatchQueue::mainQueue().async([access] {
            if (access) {
                access->startKeeper();
            }
        });
    });
}

void LibraryAccess::startKeeper() {
    const auto status = PHPhotoLibrary::authorizationStatus();
    const bool isAllowed =
        status == PHAuthorizationStatus::Authorized || status == PHAuthorizationStatus::Limited;
    if (isAllowed && !std::exchange(_isKeeperStarted, true)) {
        _keeper->start();
    }
}

void LibraryAccess::addNamedFolder(const std::string& folder) {
    _isFolderNamed = true;
    PHPhotoLibrary::grantForThisProcess();
    if (_sheet) {
        _sheet->close(); // The question is answered.
    }
    startKeeper();
    addFolder(folder);
}

void LibraryAccess::addFolder(const std::string& folder) {
    _keeper->addFolder(textFromQString(QFileInfo(qString(folder)).absoluteFilePath()));
    emit progressed(0);
}

void LibraryAccess::allowAndAddFolder(const std::string& folder) {
    PHPhotoLibrary::allowFolder(textFromQString(QFileInfo(qString(folder)).absoluteFilePath()));
    addFolder(folder);
}

void LibraryAccess::askForAccess(const Decision& decided) {
    if (_sheet) {
        _sheet->close();
    }
    const auto limit = [this, decided] {
        chooseFolder([this, decided](const std::string& folder) {
            if (folder.empty()) {
                askForAccess(decided); // The dialog was left; the question stands.
                return;
            }
            _isFolderNamed = true;
            decided(PHAuthorizationStatus::Limited, {folder});
            addFolder(folder);
        });
    };
    _sheet = new ChoiceSheet(qString(localizedString("May exifcard read your photos?")),
        qString(localizedString(
            "It shows them with their camera settings. Nothing is sent until you press Send.")),
        {{qString(localizedString("Allow all photos")),
             [decided] { decided(PHAuthorizationStatus::Authorized, {}); }},
            {qString(localizedString("Only one folder…")), limit},
            {qString(localizedString("Don’t allow")),
                [decided] { decided(PHAuthorizationStatus::Denied, {}); }}},
        &_window);
    _sheet->setDismissed([decided] { decided(PHAuthorizationStatus::NotDetermined, {}); });
    _sheet->show();
}

void LibraryAccess::offerFolders() {
    if (_sheet) {
        return; // The question about access comes first.
    }
    std::vector<ChoiceSheet::Choice> choices;
    if (const std::string pictures = picturesFolder(); !pictures.empty()) {
        choices.push_back({qString(localizedString("Use my pictures folder")),
            [this, pictures] { allowAndAddFolder(pictures); }});
    }
    choices.push_back({qString(localizedString("Choose a folder…")), [this] {
                           chooseFolder([this](const std::string& folder) {
                               if (!folder.empty()) {
                                   allowAndAddFolder(folder);
                               }
                           });
                       }});
    choices.push_back({qString(localizedString("Not now")), {}});
    _sheet = new ChoiceSheet(qString(localizedString("Where are your photos?")),
        qString(localizedString(
            "They stay where they are, and are never changed. New ones appear by themselves.")),
        std::move(choices), &_window);
    _sheet->show();
}

void LibraryAccess::chooseFolder(const std::function<void(const std::string&)>& chosen) {
    auto* const dialog = new QFileDialog(&_window, qString(localizedString("Choose a folder with photos")),
        QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::finished, this, [dialog, chosen](int result) {
        const QStringList files = dialog->selectedFiles();
        chosen(
            result == QDialog::Accepted && !files.isEmpty() ? textFromQString(files.first()) : std::string());
    });
    dialog->open();
}

void LibraryAccess::importProgressed(const ImportProgress& progress) {
    const double part =
        progress.isScanning || progress.fileCount == 0
            ? 0
            : static_cast<double>(progress.filesDone) / static_cast<double>(progress.fileCount);
    emit progressed(part);
}

void LibraryAccess::importFinished(const ImportReport& report) {
    emit progressed(-1);
    if (report.error) {
        emit failed(*report.error);
    }
}

} // namespace exifcard
