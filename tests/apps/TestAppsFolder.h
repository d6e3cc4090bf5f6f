// SPDX-License-Identifier: Apache-2.0
// What a test does with the libraries of the fixtures folder.

#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVariant>

/// The log of what the test apps are asked: "App.operation" each.
namespace TestApps {

inline QStringList& log()
{
    static QStringList lines; // cppcheck-suppress unassignedVariable ; the callers fill it
    return lines;
}

inline void note(const char* app, const char* operation)
{
    log().append(QString("%1.%2").arg(app, operation));
}

using Probe = void (*)(const char* app, const char* operation);

/// Has a function called in every operation of a test app.
inline void setProbe(Probe probe)
{
    qApp->setProperty("testApps.probe", QVariant::fromValue<quintptr>(reinterpret_cast<quintptr>(probe)));
}

inline void set(const char* property, bool value)
{
    qApp->setProperty((QByteArray("testApps.") + property).constData(), value);
}

/// Forgets what an earlier test has set.
inline void reset()
{
    log().clear();
    setProbe(note);
    for (const char* property :
         {"pending", "consumesKeys", "settingsWidget", "showsBottomDock", "looksAtHost", "hostIsWhole"})
        set(property, false);
}

/// Puts a copy of the library NAMETestApp.so into a folder.
inline void install(const QString& name, const QDir& folder, const QString& fileName)
{
    const QString source = QString(TEST_APPS_FOLDER) + '/' + name + "TestApp.so";
    ASSERT_TRUE(QFile::copy(source, folder.filePath(fileName))) << qPrintable(source);
}

/// The lines of the log that are about one operation.
inline QStringList logged(const QString& operation)
{
    return log().filter(QRegularExpression("\\." + operation + '$'));
}

} // namespace TestApps
