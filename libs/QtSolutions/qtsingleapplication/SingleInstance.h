// SPDX-License-Identifier: Apache-2.0
// One instance among those of the same application and the same user.

#pragma once

#include "InstanceLock.h"
#include "MessageServer.h"

#include <QObject>
#include <QString>

/// Settles which instance of an application is the running one, and carries messages to it.
///
/// The running instance holds a lock on a file, which the system releases however the process ends, and listens
/// at a local socket. Both lie in a folder that only the user may enter.
///
/// Thread: GUI thread.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    explicit SingleInstance(const QString& id);

    QString id() const;

    /// Makes this the running instance unless another one is. True when this one is it, now or since an earlier
    /// call. Where no folder can be had in which to settle the matter every instance is the running one: to start
    /// twice is better than not at all.
    bool claim();

    /// Sends a message to the running instance; see `sendMessage` in MessageClient.h.
    bool send(const QString& message, int timeout) const;

Q_SIGNALS:
    /// Another instance has sent this message; only the running instance gets any.
    void messageReceived(const QString& message);

private:
    QString _applicationId;
    QString _path; ///< of the lock and of the socket, without their endings; empty when there is no folder
    InstanceLock _lock;
    MessageServer _server;
    bool _claimed = false;
};
