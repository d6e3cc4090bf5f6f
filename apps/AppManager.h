// SPDX-License-Identifier: Apache-2.0
// The registry of the apps: finds, loads, switches and polls them.

#pragma once

#include "AppInfo.h"

#include <QList>
#include <QMap>
#include <QMutex>

class AppInterface;
class HostEnvironmentInterface;
class QDir;
class QEvent;
class QPluginLoader;

/// Keeps the accepted apps and drives the current one; a base of the main window.
///
/// Order of calls: setHost(), loadApps(), initializeApps(), then setCurrentApp() whenever the user chooses.
///
/// Every call into the current app is made under the app lock: start(), stop(), updatePending() with update(), and
/// handleKeyEvent(), and name() within a switch. All else is called without it. The lock is not recursive, so apps must
/// not call back into setCurrentApp(), startCurrentApp() or stopCurrentApp(); the two operations that come from the
/// event loop only try to take it.
///
/// Ownership: the apps are owned by Qt's plug-in loader and live until the process ends; the host is borrowed.
/// Thread: GUI thread.
class AppManager
{
public:
    AppManager() = default;
    AppManager(const AppManager&) = delete;
    AppManager& operator=(const AppManager&) = delete;

    /// Sets what apps are given of the host. To be called before anything else.
    void setHost(HostEnvironmentInterface* host);

    /// Loads the apps that lie in the folder of the running executable. True when at least one was accepted.
    ///
    /// To be called once, after the camera node exists: apps that require a camera are accepted only when it is open.
    /// A file that is no app is skipped and nothing is reported. So is one whose app throws before it is accepted:
    /// while it is constructed, or out of requiresCamera(), name(), version(), description() or icon().
    /// Later exceptions are not caught, nor are those of a library's static initializers: they end the process.
    bool loadApps();

    /// Does the same with the apps of a folder: its regular files named *App.so, by name without regard to case.
    bool loadAppsFrom(const QDir& folder);

    /// Hands the host to every app, in ascending index.
    void initializeApps();

    /// The index of the first app with this name, compared exactly; 0 when there is none.
    int startAppIndex(const QString& name) const;

    /// Makes the app at `index` current: stops the current app if there is one, clears both status fields, hides the
    /// bottom dock, starts the new one, and saves its name in the settings file. The current app itself is no
    /// exception: it is stopped and started. An app that has been stopped already is not stopped again. An index
    /// without an app changes nothing.
    void setCurrentApp(int index);

    /// The current app's index; -1 before the first switch.
    int currentAppIndex() const { return _currentAppIndex; }

    /// The current app, or null.
    AppInterface* currentApp() const { return _apps.value(_currentAppIndex, nullptr); }

    /// The apps by index: 0, 1, 2, … in the order of acceptance.
    const QMap<int, AppInterface*>& apps() const { return _apps; }

    /// What is shown of the apps, by index.
    const QList<AppInfo>& appInfos() const { return _infos; }

    /// The app lock.
    QMutex& appLock() { return _appLock; }

    /// Whether the current app is inside a call, with an event loop of its own if this is asked on the GUI thread.
    bool isAppInsideCall();

    /// Tells the current app to start; without one nothing happens.
    void startCurrentApp();

    /// Tells the current app to stop; without one, and when it has been stopped already, nothing happens.
    void stopCurrentApp();

    /// Lets the current app draw if it has anything pending; does nothing while it is inside another call, with an
    /// event loop of its own.
    void pollCurrentApp();

    /// Offers a key press to the current app; true when it has used it up. Other events are not offered, nor is
    /// anything to an app that is inside another call, with an event loop of its own.
    bool offerEvent(QEvent* event);

protected:
    ~AppManager() = default;

private:
    void load(QPluginLoader& loader);
    void accept(AppInterface* app);
    bool isUsable(AppInterface& app) const;
    void start(AppInterface& app);
    void stop(AppInterface& app);

    int _currentAppIndex = -1;
    bool _started = false; ///< the current app, and not stopped since
    HostEnvironmentInterface* _host = nullptr;
    QMap<int, AppInterface*> _apps;
    QList<AppInfo> _infos;
    QMutex _appLock;
};
