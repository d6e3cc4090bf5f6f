// SPDX-License-Identifier: Apache-2.0
// One instance among those of the same application and the same user.

#include "SingleInstance.h"

#include "InstanceLogging.h"
#include "MessageClient.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What a socket's address holds, less the name that lies in the folder.
constexpr int longestFolder = 60;

/// The folder of this user for locks and sockets, made if there is none, or empty.
///
/// It lies in the folder for temporary files, which sessions share: an instance started from a terminal, from
/// the desktop or by a service meets the others. Only a TMPDIR of its own sets one apart, by accident or on
/// purpose. The place is open to everybody, so a folder that somebody else has put there is not used.
QString userFolder()
{
    const QString name = QStringLiteral("/qtsingleapplication-%1").arg(::geteuid());
    QString path = QDir::tempPath() + name;
    if (path.toUtf8().size() > longestFolder)
        path = QStringLiteral("/tmp") + name;
    const QByteArray nativePath = QFile::encodeName(path);
    ::mkdir(nativePath.constData(), S_IRWXU);
    struct stat status = {};
    const bool ours = ::lstat(nativePath.constData(), &status) == 0 && S_ISDIR(status.st_mode)
                   && status.st_uid == ::geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    if (!ours) {
        qCWarning(instanceLog) << "No folder of this user at" << path;
        return QString();
    }
    return path;
}

QString pathOf(const QString& id)
{
    const QString folder = userFolder();
    if (folder.isEmpty())
        return QString();
    const QByteArray hash = QCryptographicHash::hash(id.toUtf8(), QCryptographicHash::Sha256);
    return folder + '/' + QString::fromLatin1(hash.left(12).toHex());
}

QString socketPath(const QString& path)
{
    return path + QStringLiteral(".socket");
}

} // namespace

SingleInstance::SingleInstance(const QString& id)
    : _applicationId(id)
    , _path(pathOf(id))
{
    connect(&_server, &MessageServer::messageReceived, this, &SingleInstance::messageReceived);
}

QString SingleInstance::id() const
{
    return _applicationId;
}

bool SingleInstance::claim()
{
    if (_claimed)
        return true;
    if (!_path.isEmpty()) {
        if (_lock.acquire(_path + QStringLiteral(".lock")) == InstanceLock::Outcome::HeldByAnother)
            return false;
        // A tidied folder for temporary files may have lost the lock of an instance that still listens.
        if (isAnswered(socketPath(_path))) {
            _lock.release();
            return false;
        }
        _server.listen(socketPath(_path));
    }
    _claimed = true;
    return true;
}

bool SingleInstance::send(const QString& message, int timeout) const
{
    return !_path.isEmpty() && sendInstanceMessage(socketPath(_path), message, timeout);
}
