// SPDX-License-Identifier: Apache-2.0
// The sending side between two instances of an application.

#include "MessageClient.h"

#include "InstanceLogging.h"
#include "MessageProtocol.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QString>
#include <QThread>

#include <algorithm>

namespace {

enum class Outcome {
    Confirmed,
    NotYet, ///< nobody there, or the connection was lost before the answer
    Refused
};

/// Between two attempts to reach an instance that is about to listen, in milliseconds.
constexpr unsigned long pause = 20;

int remaining(const QDeadlineTimer& deadline)
{
    return deadline.isForever() ? -1 : static_cast<int>(deadline.remainingTime());
}

Outcome attempt(const QString& socketPath, const QByteArray& frame, const QDeadlineTimer& deadline)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(remaining(deadline)))
        return Outcome::NotYet;
    if (!isOfThisUser(socket)) {
        qCWarning(instanceLog) << "Another user listens at" << socketPath;
        return Outcome::Refused;
    }
    socket.write(frame);
    while (socket.bytesAvailable() < frameAnswer().size())
        if (!socket.waitForReadyRead(remaining(deadline)))
            return Outcome::NotYet;
    return socket.read(frameAnswer().size()) == frameAnswer() ? Outcome::Confirmed : Outcome::Refused;
}

} // namespace

bool sendInstanceMessage(const QString& socketPath, const QString& message, int timeout)
{
    const QByteArray text = message.toUtf8();
    if (text.size() > longestMessage) {
        qCWarning(instanceLog) << "A message of" << text.size() << "bytes is too long";
        return false;
    }
    const QByteArray frame = makeFrame(text);
    const QDeadlineTimer deadline(timeout);
    for (;;) {
        const Outcome outcome = attempt(socketPath, frame, deadline);
        if (outcome != Outcome::NotYet || deadline.hasExpired())
            return outcome == Outcome::Confirmed;
        QThread::msleep(pause);
    }
}

bool isAnswered(const QString& socketPath)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    // Connecting to a local socket succeeds or fails at once; the limit is for one whose queue is full.
    return socket.waitForConnected(1000) && isOfThisUser(socket);
}
