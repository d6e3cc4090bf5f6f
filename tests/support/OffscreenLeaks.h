// SPDX-License-Identifier: Apache-2.0
// What Qt's offscreen platform itself never frees, for programs that run under the leak sanitizer.

#pragma once

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

/// The leaks, in the sanitizer's words. An application without a line of ours has them as well.
inline constexpr char offscreenLeaks[] = "leak:libqoffscreen\nleak:QScreen::QScreen\nleak:QWindowSystemInterface\n";

/// Lets a program that is started with `environment` overlook them; a file in `folder` says so.
inline void overlookOffscreenLeaks(QProcessEnvironment& environment, const QDir& folder)
{
    QFile file(folder.filePath("leak-sanitizer.supp"));
    file.open(QIODevice::WriteOnly); // without the file the sanitizer does not let the program start
    file.write(offscreenLeaks);
    environment.insert("LSAN_OPTIONS", "suppressions=" + file.fileName());
}
