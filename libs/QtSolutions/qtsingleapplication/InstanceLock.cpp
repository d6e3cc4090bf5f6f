// SPDX-License-Identifier: Apache-2.0
// A lock between processes that ends with the process.

#include "InstanceLock.h"

#include "InstanceLogging.h"

#include <QFile>
#include <QString>

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Whether the open file still goes by its name; somebody may have removed it before it was locked. Empty where that
/// cannot be seen.
std::optional<bool> hasName(int descriptor, const QByteArray& path)
{
    struct stat open = {};
    if (::fstat(descriptor, &open) != 0)
        return std::nullopt;
    struct stat named = {};
    if (::lstat(path.constData(), &named) != 0)
        return errno == ENOENT ? std::make_optional(false) : std::nullopt;
    return open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

} // namespace

InstanceLock::~InstanceLock()
{
    release();
}

InstanceLock::Outcome InstanceLock::acquire(const QString& path)
{
    release();
    const QByteArray nativePath = QFile::encodeName(path);
    for (;;) {
        // Not inherited by programs that this one starts: they may outlive it.
        _descriptor = ::open(nativePath.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
        if (_descriptor < 0) {
            qCWarning(instanceLog) << "Cannot open" << path;
            return Outcome::Impossible;
        }
        if (::flock(_descriptor, LOCK_EX | LOCK_NB) != 0) {
            const bool held = errno == EWOULDBLOCK;
            release();
            return held ? Outcome::HeldByAnother : Outcome::Impossible;
        }
        const std::optional<bool> named = hasName(_descriptor, nativePath);
        if (named == true)
            return Outcome::Acquired;
        release();
        if (!named.has_value()) {
            qCWarning(instanceLog) << "Cannot look at" << path;
            return Outcome::Impossible;
        }
    }
}

void InstanceLock::release()
{
    if (_descriptor >= 0) {
        ::close(_descriptor);
        _descriptor = -1;
    }
}
