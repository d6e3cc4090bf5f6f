// SPDX-License-Identifier: Apache-2.0
// What another process takes of the machine.

#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <unistd.h>

/// The memory that a process occupies, in bytes, or 0 when it does not run.
inline qint64 residentBytes(qint64 pid)
{
    QFile file(QString("/proc/%1/statm").arg(pid));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * ::getpagesize() : 0;
}

/// The number of descriptors that a process holds.
inline int openFiles(qint64 pid)
{
    return QDir(QString("/proc/%1/fd").arg(pid)).entryList(QDir::Files | QDir::System).size();
}
