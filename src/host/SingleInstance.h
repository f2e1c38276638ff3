#pragma once

#include <QObject>
#include <QStringList>

class QLocalServer;

namespace exifcard {

/// Keeps the program to one window for each data folder: a second start hands its wishes to the first.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QObject* parent = nullptr);

    /// @param wishes  What the window that is already there shall do.
    /// @return Whether there is one, which then has the wishes.
    bool handOver(const QStringList& wishes);
    /// Listens to later starts. Where that fails, several windows live beside each other.
    void listen();

signals:
    void startedAgain(const QStringList& wishes);

private:
    void takeConnection();

    QString _socket;
    QLocalServer* _server = nullptr;
};

} // namespace exifcard
