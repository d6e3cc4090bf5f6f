// SPDX-License-Identifier: Apache-2.0
// What goes over the socket between two instances of an application.

#include "MessageProtocol.h"

#include <QLocalSocket>
#include <QtEndian>

#include <sys/socket.h>
#include <unistd.h>

const QByteArray& frameStart()
{
    static const QByteArray bytes("QSA1", 4);
    return bytes;
}

const QByteArray& frameAnswer()
{
    static const QByteArray bytes("QSOK", 4);
    return bytes;
}

QByteArray makeFrame(const QByteArray& text)
{
    QByteArray length(4, '\0');
    qToBigEndian(static_cast<quint32>(text.size()), length.data());
    return frameStart() + length + text;
}

int announcedLength(const QByteArray& header)
{
    if (header.size() < frameHeaderSize || !header.startsWith(frameStart()))
        return -1;
    const auto length = qFromBigEndian<quint32>(header.constData() + frameStart().size());
    return length <= static_cast<quint32>(longestMessage) ? static_cast<int>(length) : -1;
}

bool isOfThisUser(const QLocalSocket& socket)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    const auto descriptor = static_cast<int>(socket.socketDescriptor());
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}
