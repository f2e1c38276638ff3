#include "host/SingleInstance.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"
#include "platform/uikit/Text+Qt.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

namespace exifcard {
namespace {

constexpr int kLongestWaitInMilliseconds = 1000;
constexpr qint64 kGreatestMessage = 1 << 16;

} // namespace

SingleInstance::SingleInstance(QObject* parent) : QObject(parent), _server(new QLocalServer(this)) {
    const QByteArray folder = QByteArray::fromStdString(dataFolder());
    const QByteArray hash = QCryptographicHash::hash(folder, QCryptographicHash::Sha1).toHex().left(12);
    _socket = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
              QStringLiteral("/exifcard-messages-") + QString::fromLatin1(hash);
    connect(_server, &QLocalServer::newConnection, this, &SingleInstance::takeConnection);
}

bool SingleInstance::handOver(const QStringList& wishes) {
    QLocalSocket socket;
    socket.connectToServer(_socket);
    if (!socket.waitForConnected(kLongestWaitInMilliseconds)) {
        return false;
    }
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << wishes;
    socket.write(message);
    // The answer tells that a living program took it.
    return socket.waitForBytesWritten(kLongestWaitInMilliseconds) &&
           socket.waitForReadyRead(kLongestWaitInMilliseconds);
}

void SingleInstance::listen() {
    _server->setSocketOptions(QLocalServer::UserAccessOption);
    if (_server->listen(_socket)) {
        return;
    }
    QLocalServer::removeServer(_socket); // Of a program that was killed.
    if (!_server->listen(_socket)) {
        debugLog("no single instance: " + textFromQString(_server->errorString()));
    }
}

void SingleInstance::takeConnection() {
    QLocalSocket* const socket = _server->nextPendingConnection();
    socket->setReadBufferSize(kGreatestMessage);
    connect(socket, &QLocalSocket::disconnected, socket, &QLocalSocket::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        QDataStream stream(socket);
        stream.startTransaction();
        QStringList wishes;
        stream >> wishes;
        if (!stream.commitTransaction()) {
            return; // The rest is still to come.
        }
        socket->write("1");
        socket->flush();
        emit startedAgain(wishes);
    });
}

} // namespace exifcard
