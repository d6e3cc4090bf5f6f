// SPDX-License-Identifier: Apache-2.0
// The receiving side between two instances of an application.

#include "MessageServer.h"

#include "InstanceLogging.h"
#include "MessageProtocol.h"

#include <QLocalSocket>
#include <QTimer>

MessageServer::MessageServer()
{
    _server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&_server, &QLocalServer::newConnection, this, &MessageServer::acceptConnections);
}

bool MessageServer::listen(const QString& path)
{
    QLocalServer::removeServer(path);
    if (!_server.listen(path)) {
        qCWarning(instanceLog) << "Cannot listen at" << path << "-" << _server.errorString();
        return false;
    }
    return true;
}

void MessageServer::acceptConnections()
{
    while (QLocalSocket* const connection = _server.nextPendingConnection()) {
        if (!isOfThisUser(*connection)) {
            qCWarning(instanceLog) << "Refused another user";
            connection->abort();
            connection->deleteLater();
            continue;
        }
        while (_connections.size() >= connectionLimit)
            drop(_connections.first());
        _connections.append(connection);
        connection->setReadBufferSize(frameHeaderSize + longestMessage);
        connect(
            connection, &QLocalSocket::readyRead, this, [this, connection] { read(connection); });
        connect(
            connection, &QLocalSocket::disconnected, this, [this, connection] { drop(connection); });
        QTimer::singleShot(timeLimit, connection, [this, connection] { drop(connection); });
    }
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
