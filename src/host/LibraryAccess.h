#pragma once

#include "platform/foundation/NotificationCenter.h"
#include "platform/photos/PHPhotoLibrary.h"

#include <QObject>
#include <QPointer>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace exifcard {

class ChoiceSheet;
class LibraryKeeper;
struct ImportProgress;
struct ImportReport;

/// The way of photos into the window: asks whether the library may be read, offers folders at the first
/// start, and keeps the library up to date.
class LibraryAccess : public QObject {
    Q_OBJECT

public:
    /// @param window  Where questions are shown.
    explicit LibraryAccess(QWidget& window);
    ~LibraryAccess() override;

    /// @param folder  One that the user named at the start, which is permission enough; absolute.
    void start(const std::optional<std::string>& folder);
    void addFolder(const std::string& folder);
    /// As at the start: naming a folder answers a question that waits, and permits what the answer had not.
    void addNamedFolder(const std::string& folder);
    /// The sheet that waits for an answer; null without.
    ChoiceSheet* openSheet() const;

signals:
    /// 0 … 1; below 0 when nothing is being imported.
    void progressed(double part);
    void failed(const std::string& error);

private:
    using Decision = std::function<void(PHAuthorizationStatus status, std::vector<std::string> folders)>;

    void askForAccess(const Decision& decided);
    /// Of a question that stays open nothing is stored: the next start asks again.
    void decide(PHAuthorizationStatus status, const std::vector<std::string>& folders);
    void offerFolders();
    /// Choosing a folder permits what lies in it, where not all may be read.
    void allowAndAddFolder(const std::string& folder);
    void chooseFolder(const std::function<void(const std::string&)>& chosen);
    void startKeeper();
    void importProgressed(const ImportProgress& progress);
    void importFinished(const ImportReport& report);

    QWidget& _window;
    LibraryKeeper* _keeper = nullptr;
    QPointer<ChoiceSheet> _sheet;
    /// The question was left open; screens do not ask it again by themselves. Any thread.
    const std::shared_ptr<std::atomic<bool>> _isLeftOpen = std::make_shared<std::atomic<bool>>(false);
    bool _isKeeperStarted = false;
    bool _isFolderNamed = false; ///< No folder need be offered.
    std::vector<NotificationCenter::Observation> _observations;
};

} // namespace exifcard
