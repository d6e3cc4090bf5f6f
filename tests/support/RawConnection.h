// SPDX-License-Identifier: Apache-2.0
// A plain local socket that can misbehave.

#pragma once

#include <QByteArray>
#include <QString>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

/// A connection to the local socket at `path`, over which anything can be sent.
class RawConnection
{
public:
    explicit RawConnection(const QString& path)
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.toUtf8(), sizeof address.sun_path - 1);
        _connected = ::connect(_descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }

    ~RawConnection() { ::close(_descriptor); }

    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    bool connected() const { return _connected; }

    bool write(const QByteArray& bytes)
    {
        return ::send(_descriptor, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) == bytes.size();
    }

    /// Whether the other side ends the connection within `milliseconds`, without a word.
    bool isEndedWithin(int milliseconds)
    {
        timeval time = {milliseconds / 1000, milliseconds % 1000 * 1000};
        ::setsockopt(_descriptor, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
        char byte = 0;
        const ssize_t got = ::recv(_descriptor, &byte, 1, 0);
        return got == 0 || (got < 0 && errno == ECONNRESET);
    }

private:
    int _descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    bool _connected = false;
};
