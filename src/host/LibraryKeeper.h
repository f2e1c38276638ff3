#pragma once

#include <QObject>

#include <memory>
#include <string>
#include <vector>

namespace exifcard {

struct ImportProgress;
struct ImportReport;

/// Takes folders into the photo library and follows them while the program runs. Works on a queue; signals
/// come on the main queue.
class LibraryKeeper : public QObject {
    Q_OBJECT

public:
    explicit LibraryKeeper(QObject* parent = nullptr);
    /// Does not wait: what is under way ends with the program, and the next import finds the rest.
    ~LibraryKeeper() override;

    /// Looks through the folders that the library has, and follows them.
    void start();
    /// Takes in another folder and all below it, and follows it too.
    /// @param folder  Absolute.
    void addFolder(std::string folder);

signals:
    /// Whether the library was told to take any folder.
    void started(bool hasFolders);
    void progressed(const ImportProgress& progress);
    void finished(const ImportReport& report);

private:
    struct State; // Shared with what runs on the queue.

    std::shared_ptr<State> _state;
};

} // namespace exifcard
