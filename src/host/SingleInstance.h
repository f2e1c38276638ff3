#pragma once

#include "platform/foundation/FileDescriptor.h"

#include <QObject>
#include <QStringList>

#include <string>

class QSocketNotifier;

namespace exifcard {

/// Keeps the program to one window for each data folder: a second start hands its wishes to the first,
/// through a socket of the user's own.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Blocks for seconds at most.
    /// @param wishes  What the window that is already there shall do; without NUL in them.
    /// @return Whether there is one, which then has the wishes.
    bool handOver(const QStringList& wishes);
    /// Listens to later starts. Where that fails, several windows live beside each other.
    void listen();

signals:
    void startedAgain(const QStringList& wishes);

private:
    class Visitor;

    void takeVisitors();

    std::string _path; ///< Of the socket.
    FileDescriptor _socket;
    QSocketNotifier* _notifier = nullptr; ///< Null until it listens.
};

} // namespace exifcard
