#include "host/SingleInstance.h"

#include "platform/foundation/FilePaths.h"
#include "platform/foundation/Log.h"

#include <QCryptographicHash>
#include <QSocketNotifier>
#include <QStandardPaths>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace exifcard {
namespace {

constexpr timeval kLongestWait = {.tv_sec = 1, .tv_usec = 0};
constexpr qsizetype kGreatestMessage = 1 << 16;
constexpr int kMostWaiting = 8;

/// Nothing for a path that is too long for a socket.
std::optional<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        return std::nullopt;
    }
    path.copy(address.sun_path, path.size());
    return address;
}

bool bindTo(const FileDescriptor& socket, const sockaddr_un& address) {
    return ::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

bool sendAll(const FileDescriptor& socket, QByteArrayView message) {
    while (!message.isEmpty()) {
        const auto sent =
            ::send(socket.number(), message.data(), static_cast<std::size_t>(message.size()), MSG_NOSIGNAL);
        if (sent <= 0) {
            return false;
        }
        message = message.sliced(sent);
    }
    return true;
}

} // namespace

/// Another start, until it has told its wishes: texts with NUL between them, to the end of what it sends.
class SingleInstance::Visitor : public QObject {
public:
    Visitor(int socket, SingleInstance& host)
        : QObject(&host)
        , _host(host)
        , _socket(socket)
        , _notifier(new QSocketNotifier(socket, QSocketNotifier::Read, this)) {
        connect(_notifier, &QSocketNotifier::activated, this, &Visitor::read);
    }

private:
    void read() {
        std::array<char, 4096> part = {};
        const auto length = ::recv(_socket.number(), part.data(), part.size(), 0);
        if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
            return;
        }
        if (length > 0 && _message.size() < kGreatestMessage) {
            _message.append(part.data(), static_cast<qsizetype>(length));
            return; // The rest is still to come.
        }
        _notifier->setEnabled(false);
        deleteLater();
        // The answer tells that a living program took it.
        if (length == 0 && ::send(_socket.number(), "1", 1, MSG_NOSIGNAL) == 1) {
            emit _host.startedAgain(QString::fromUtf8(_message).split(QChar(u'\0')));
        }
    }

    SingleInstance& _host;
    FileDescriptor _socket;
    QSocketNotifier* _notifier;
    QByteArray _message;
};

SingleInstance::SingleInstance(QObject* parent) : QObject(parent) {
    const QByteArray folder = QByteArray::fromStdString(dataFolder());
    const QByteArray hash = QCryptographicHash::hash(folder, QCryptographicHash::Sha1).toHex().left(12);
    _path = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation).toStdString();
    _path += "/exifcard-messages-";
    _path += hash.toStdString();
}

SingleInstance::~SingleInstance() {
    if (_notifier != nullptr) {
        delete _notifier; // It must not outlive what it watches.
        ::unlink(_path.c_str());
    }
}

bool SingleInstance::handOver(const QStringList& wishes) {
    const auto address = addressOf(_path);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!address || !socket.isOpen()) {
        return false;
    }
    for (const int way : {SO_RCVTIMEO, SO_SNDTIMEO}) {
        ::setsockopt(socket.number(), SOL_SOCKET, way, &kLongestWait, sizeof(kLongestWait));
    }
    char answer = 0;
    return ::connect(socket.number(), reinterpret_cast<const sockaddr*>(&*address), sizeof(*address)) == 0 &&
           sendAll(socket, wishes.join(QChar(u'\0')).toUtf8()) && ::shutdown(socket.number(), SHUT_WR) == 0 &&
           ::recv(socket.number(), &answer, 1, 0) == 1;
}

void SingleInstance::listen() {
    const auto address = addressOf(_path);
    _socket = FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    bool isBound = address && bindTo(_socket, *address);
    if (address && !isBound && errno == EADDRINUSE) {
        ::unlink(_path.c_str()); // Of a program that was killed.
        isBound = bindTo(_socket, *address);
    }
    // Nobody reaches it before it listens.
    if (!isBound || ::chmod(_path.c_str(), S_IRUSR | S_IWUSR) != 0 ||
        ::listen(_socket.number(), kMostWaiting) != 0) {
        debugLog("no single instance: %@", {std::string(std::strerror(errno))});
        return;
    }
    _notifier = new QSocketNotifier(_socket.number(), QSocketNotifier::Read, this);
    connect(_notifier, &QSocketNotifier::activated, this, &SingleInstance::takeVisitors);
}

void SingleInstance::takeVisitors() {
    while (true) {
        const int visitor = ::accept4(_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (visitor < 0) {
            return;
        }
        new Visitor(visitor, *this);
    }
}

} // namespace exifcard
