// SPDX-License-Identifier: Apache-2.0
// The receiving side between two instances of an application.

#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

#include <memory>

class QLocalSocket;
class QSocketNotifier;

/// Receives the messages of other instances at a local socket.
///
/// Nothing that is sent to it holds up the event loop or makes the process grow: it never waits, hears at most
/// `connectionLimit` connections at once (a further one costs the oldest its place), gives each `timeLimit` to
/// bring its message, reads no more of it than the longest message, and ends those that send something else.
/// Where the process has no descriptor left for a further connection, that costs the oldest its place, too, or is
/// tried again after `pause`. Processes of other users are not heard.
///
/// Thread: GUI thread.
class MessageServer : public QObject
{
    Q_OBJECT

public:
    static constexpr int connectionLimit = 32;
    static constexpr int timeLimit = 2000; ///< milliseconds from connecting to the whole message

    static constexpr int pause = 100; ///< milliseconds until a connection that there was no descriptor for

    MessageServer();
    ~MessageServer() override;

    /// Listens at `path`, in place of whatever an ended process has left there. Called once; the caller holds the lock.
    /// False when that is not possible: then there are no messages.
    bool listen(const QString& path);

Q_SIGNALS:
    /// A complete message has come, and its sender knows.
    void messageReceived(const QString& message);

private:
    bool bind(const QByteArray& path);
    void acceptConnection();
    void makeRoom();
    void hear(int descriptor);
    void add(QLocalSocket* connection);
    void read(QLocalSocket* connection);
    void answer(QLocalSocket* connection);
    void drop(QLocalSocket* connection);

    int _listener = -1;
    std::unique_ptr<QSocketNotifier> _notifier; ///< of the listener, when it listens
    QByteArray _path;                           ///< of the socket, when it is there
    QList<QLocalSocket*> _connections;          ///< the oldest first
};
