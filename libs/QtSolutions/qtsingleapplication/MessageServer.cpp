// SPDX-License-Identifier: Apache-2.0
// The receiving side between two instances of an application.

#include "MessageServer.h"

#include "InstanceLogging.h"
#include "MessageProtocol.h"

#include <QFile>
#include <QLocalSocket>
#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Connections that may wait to be accepted.
constexpr int backlog = 50;

} // namespace

// Not a QLocalServer: that one stops listening for good when it once cannot accept a connection.
MessageServer::MessageServer() = default;

MessageServer::~MessageServer()
{
    _notifier.reset();
    if (_listener >= 0)
        ::close(_listener);
    if (!_path.isEmpty())
        ::unlink(_path.constData());
}

bool MessageServer::listen(const QString& path)
{
    _listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (!bind(QFile::encodeName(path)) || ::listen(_listener, backlog) != 0) {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the text is this thread's
        qCWarning(instanceLog) << "Cannot listen at" << path << "-" << std::strerror(errno);
        return false;
    }
    _notifier = std::make_unique<QSocketNotifier>(_listener, QSocketNotifier::Read);
    connect(_notifier.get(), &QSocketNotifier::activated, this, &MessageServer::acceptConnection);
    return true;
}

bool MessageServer::bind(const QByteArray& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return false;
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    ::unlink(path.constData());
    // The mode that the file will have: it is nobody else's from its first moment.
    if (::fchmod(_listener, S_IRUSR | S_IWUSR) != 0
        || ::bind(_listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return false;
    _path = path;
    return true;
}

/// Accepts one connection only, so that those that are there are heard before the next one can cost them their place.
void MessageServer::acceptConnection()
{
    const int descriptor = ::accept4(_listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor >= 0)
        hear(descriptor);
    else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM)
        makeRoom();
}

/// Makes it possible to accept the connection that waits, now or after a while.
void MessageServer::makeRoom()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the text is this thread's
    qCWarning(instanceLog) << "Cannot accept a connection -" << std::strerror(errno);
    if (!_connections.isEmpty()) {
        drop(_connections.first());
        return;
    }
    _notifier->setEnabled(false);
    QTimer::singleShot(pause, _notifier.get(), [this] { _notifier->setEnabled(true); });
}

void MessageServer::hear(int descriptor)
{
    auto connection = std::make_unique<QLocalSocket>();
    if (!connection->setSocketDescriptor(descriptor)) {
        ::close(descriptor);
        return;
    }
    if (!isOfThisUser(*connection)) {
        qCWarning(instanceLog) << "Refused another user";
        return;
    }
    while (_connections.size() >= connectionLimit)
        drop(_connections.first());
    add(connection.release());
}

void MessageServer::add(QLocalSocket* connection)
{
    connection->setParent(this);
    _connections.append(connection);
    connection->setReadBufferSize(frameHeaderSize + longestMessage);
    connect(connection, &QLocalSocket::readyRead, this, [this, connection] { read(connection); });
    connect(connection, &QLocalSocket::disconnected, this, [this, connection] { drop(connection); });
    QTimer::singleShot(timeLimit, connection, [this, connection] { drop(connection); });
}

void MessageServer::read(QLocalSocket* connection)
{
    if (connection->bytesAvailable() < frameHeaderSize)
        return;
    const int length = announcedLength(connection->peek(frameHeaderSize));
    if (length < 0) {
        drop(connection);
        return;
    }
    if (connection->bytesAvailable() < frameHeaderSize + length)
        return;
    connection->skip(frameHeaderSize);
    const QString message = QString::fromUtf8(connection->read(length));
    answer(connection);
    Q_EMIT messageReceived(message); // last: a receiver may run an event loop or end the application
}

/// Confirms the message and ends the connection. It is gone when the sender has read the answer, or
/// when its time is over.
void MessageServer::answer(QLocalSocket* connection)
{
    connection->write(frameAnswer());
    connection->flush();
    connection->disconnectFromServer();
}

/// Ends a connection and forgets it; it may be in the middle of one of its own signals.
void MessageServer::drop(QLocalSocket* connection)
{
    if (_connections.removeOne(connection)) {
        connection->disconnect(this);
        connection->abort();
        connection->deleteLater();
    }
}
