// SPDX-License-Identifier: Apache-2.0
// A copy of the program, for a run whose settings are nobody else's.

#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Copies `program` and the files beside it into `folder`, with settings by which it starts with Stereo View, whatever
/// other apps were built. Returns whether all is there.
inline bool copyProgram(const QString& program, const QDir& folder)
{
    for (const QFileInfo& file : QFileInfo(program).dir().entryInfoList(QDir::Files))
        if (!QFile::copy(file.filePath(), folder.filePath(file.fileName())))
            return false;
    QFile settings(folder.filePath("settings/DashboardSettings.cfg"));
    return folder.mkdir("settings") && settings.open(QIODevice::WriteOnly)
        && settings.write("AppConfig : { Application : { UseDarkSkin = false; CurrentApp = \"Stereo View\"; }; };") > 0;
}
