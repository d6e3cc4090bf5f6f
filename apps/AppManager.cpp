// SPDX-License-Identifier: Apache-2.0
// The registry of the apps: finds, loads, switches and polls them.

#include "AppManager.h"

#include "AppInterface.h"
#include "HostEnvironmentInterface.h"
#include "StatusBarText.h"

#include <app/AppSettings.h>
#include <camera/VYRCameraDevice.h>

#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QEvent>
#include <QLoggingCategory>
#include <QMutexLocker>
#include <QPluginLoader>

#include <exception>
#include <mutex>

namespace {

// Off until a rule turns it on: users are not told of files that are no apps.
Q_LOGGING_CATEGORY(appsLog, "vyr.apps", QtFatalMsg)

void clear(StatusBarText* field)
{
    if (field != nullptr)
        field->setStatusText(QString());
}

/// Loads the library itself. An exception out of its static initializers deliberately ends the process: the system's
/// loader would never let go of its lock, and the next thread to load anything would wait for it for ever.
void loadLibrary(QPluginLoader& loader) noexcept
{
    // All symbols at once: were they looked up as they are called, a library that lacks one would be taken for an app
    // and would end the process later.
    loader.setLoadHints(loader.loadHints() | QLibrary::ResolveAllSymbolsHint);
    loader.load();
}

} // namespace

void AppManager::setHost(HostEnvironmentInterface* host)
{
    _host = host;
}

bool AppManager::loadApps()
{
    return loadAppsFrom(QDir(QCoreApplication::applicationDirPath()));
}

bool AppManager::loadAppsFrom(const QDir& folder)
{
    // The case of the pattern counts; the order is still by name without regard to case.
    const auto files = QDir::Files | QDir::CaseSensitive;
    const QStringList names = folder.entryList({QStringLiteral("*App.so")}, files);
    for (const QString& name : names) {
        QPluginLoader loader(folder.absoluteFilePath(name));
        qCDebug(appsLog) << "Loading:" << loader.fileName(); // the last one, when its library ends the process
        try {
            load(loader);
        } catch (const std::exception& error) {
            qCWarning(appsLog) << "Failed while loading:" << loader.fileName() << error.what();
        } catch (...) {
            qCWarning(appsLog) << "Failed while loading:" << loader.fileName();
        }
    }
    return !_apps.isEmpty();
}

/// Loads one file and accepts its app if it has one. What the app throws meanwhile comes out, and then it is not
/// accepted; like what is no app, it stays loaded.
void AppManager::load(QPluginLoader& loader)
{
    loadLibrary(loader);
    auto* const app = qobject_cast<AppInterface*>(loader.instance());
    if (app == nullptr) {
        // Deliberately not unloaded: a library that is no app may already have registered things with the process that
        // would be left dangling.
        qCWarning(appsLog) << "Not an app:" << loader.fileName() << loader.errorString();
        return;
    }
    if (!isUsable(*app)) {
        qCInfo(appsLog) << "Requires a camera:" << loader.fileName();
        loader.unload();
        return;
    }
    accept(app);
}

bool AppManager::isUsable(AppInterface& app) const
{
    return !app.requiresCamera() || _host->cameraDevice()->IsOpen();
}

void AppManager::accept(AppInterface* app)
{
    AppInfo info;
    info.name = app->name();
    info.version = app->version();
    info.description = app->description();
    info.icon = app->icon();
    _infos.append(info);
    _apps.insert(_apps.size(), app);
}

void AppManager::initializeApps()
{
    for (AppInterface* const app : qAsConst(_apps))
        app->initialize(_host);
}

int AppManager::startAppIndex(const QString& name) const
{
    for (auto app = _apps.cbegin(); app != _apps.cend(); ++app)
        if (app.value()->name() == name)
            return app.key();
    return 0;
}

void AppManager::setCurrentApp(int index)
{
    AppInterface* const next = _apps.value(index, nullptr);
    if (next == nullptr)
        return;
    const QMutexLocker locker(&_appLock);
    if (AppInterface* const previous = currentApp())
        stop(*previous);
    clear(_host->statusText(0));
    clear(_host->statusText(1));
    _host->bottomDock()->hide();
    _currentAppIndex = index;
    start(*next);
    AppSettings::instance().currentApp = next->name();
    saveSettings();
}

bool AppManager::isAppInsideCall()
{
    return !std::unique_lock<QMutex>(_appLock, std::try_to_lock).owns_lock();
}

void AppManager::startCurrentApp()
{
    if (AppInterface* const app = currentApp()) {
        const QMutexLocker locker(&_appLock);
        start(*app);
    }
}

void AppManager::stopCurrentApp()
{
    if (AppInterface* const app = currentApp()) {
        const QMutexLocker locker(&_appLock);
        stop(*app);
    }
}

void AppManager::start(AppInterface& app)
{
    _started = true;
    app.start();
}

/// Apps are told once: a window may be closed more than once, and may go without having been closed.
void AppManager::stop(AppInterface& app)
{
    if (!_started)
        return;
    _started = false;
    app.stop();
}

// Both of these come from the event loop. So if the lock is taken, the app itself is running a loop of its own, a
// dialog's for one, and waiting for the lock would wait for ever.

void AppManager::pollCurrentApp()
{
    AppInterface* const app = currentApp();
    if (app == nullptr)
        return;
    const std::unique_lock<QMutex> lock(_appLock, std::try_to_lock);
    if (lock.owns_lock() && app->updatePending())
        app->update();
}

bool AppManager::offerEvent(QEvent* event)
{
    AppInterface* const app = currentApp();
    if (event->type() != QEvent::KeyPress || app == nullptr)
        return false;
    const std::unique_lock<QMutex> lock(_appLock, std::try_to_lock);
    return lock.owns_lock() && app->handleKeyEvent(event);
}
