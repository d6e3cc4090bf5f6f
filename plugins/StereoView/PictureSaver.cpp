// SPDX-License-Identifier: Apache-2.0
// Saves pictures as files.

#include "PictureSaver.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImageWriter>

namespace {

constexpr int namesTried = 1000;

/// A file that is new when it is opened, and removed again unless it is kept.
class NewFile
{
public:
    explicit NewFile(const QString& path)
        : _file(path)
    {
        _isNew = _file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    }

    ~NewFile()
    {
        if (_isNew && !_kept)
            _file.remove();
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool isNew() const { return _isNew; }
    bool existsAlready() const { return !_isNew && _file.exists(); }
    QString errorString() const { return _file.errorString(); }
    void keep() { _kept = true; }

    /// Empty when it went well, or what went wrong.
    QString write(const QImage& picture)
    {
        QImageWriter writer(&_file, "png");
        if (!writer.write(picture))
            return writer.errorString();
        // A full disk may show itself only now.
        return _file.flush() ? QString() : _file.errorString();
    }

private:
    QFile _file;
    bool _isNew = false;
    bool _kept = false;
};

QString fileBaseOf(const QDateTime& when, int attempt)
{
    const QString stamp = QStringLiteral("stereo_") + when.toString(QStringLiteral("yyyyMMdd_HHmmss_zzz"));
    return attempt == 1 ? stamp : QStringLiteral("%1_%2").arg(stamp).arg(attempt);
}

} // namespace

SaveOutcome savePicturePair(const QString& folder, const QDateTime& when, const QImage& left, const QImage& right)
{
    SaveOutcome outcome;
    outcome.folder = folder;
    if (!QDir().mkpath(folder)) {
        outcome.problem = QCoreApplication::translate("PictureSaver", "the folder cannot be made");
        return outcome;
    }
    for (int attempt = 1; attempt <= namesTried; ++attempt) {
        const QString fileBase = fileBaseOf(when, attempt);
        NewFile leftFile(QDir(folder).filePath(fileBase + QStringLiteral("_left.png")));
        NewFile rightFile(QDir(folder).filePath(fileBase + QStringLiteral("_right.png")));
        if (leftFile.existsAlready() || rightFile.existsAlready())
            continue;
        if (!leftFile.isNew() || !rightFile.isNew()) {
            outcome.problem = leftFile.isNew() ? rightFile.errorString() : leftFile.errorString();
            return outcome;
        }
        outcome.problem = leftFile.write(left);
        if (outcome.problem.isEmpty())
            outcome.problem = rightFile.write(right);
        if (outcome.problem.isEmpty()) {
            leftFile.keep();
            rightFile.keep();
            outcome.saved = true;
            outcome.fileBase = fileBase;
        }
        return outcome;
    }
    outcome.problem = QCoreApplication::translate("PictureSaver", "every name is in use");
    return outcome;
}
