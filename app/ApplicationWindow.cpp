// SPDX-License-Identifier: Apache-2.0
// The main window: the host in which the current app draws.

#include "ApplicationWindow.h"

#include "AboutText.h"
#include "AppSettings.h"
#include "CStatus.h"
#include "DarkSkin.h"
#include "Documentation.h"
#include "Identity.h"
#include "Vendor.h"

#include <apps/AppInterface.h>
#include <camera/VYRCameraDevice.h>
#include <camera/VYRLibrary.h>
#include <settings/SettingsDialog.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QMessageBox>
#include <QSignalMapper>
#include <QTabWidget>

#include <functional>
#include <vector>

namespace {

void setIdentity()
{
    QCoreApplication::setOrganizationName(QLatin1String(Vendor::organizationName));
    QCoreApplication::setOrganizationDomain(QLatin1String(Vendor::organizationDomain));
    QCoreApplication::setApplicationName(QLatin1String(Identity::applicationName));
    QCoreApplication::setApplicationVersion(QLatin1String(Identity::applicationVersion));
}

} // namespace

ApplicationWindow::ApplicationWindow()
    : _frameTimer(this)
{
    setIdentity();
    loadSettings();
    if (AppSettings::instance().useDarkSkin)
        applyDarkSkin();
    openCamera();
    setHost(this);
    loadApps();
    setupUi(this, !apps().isEmpty(), _camera->IsOpen());
    connect(_menuActions, &QSignalMapper::mappedInt, this, &ApplicationWindow::onMenuAction);
    initializeApps();
    startSavedApp();
    if (_camera->IsOpen())
        startPolling();
    else
        ApplicationWindow::statusText(0)->setStatusTextColored(tr("No VYR Camera Found"), Qt::red);
}

ApplicationWindow::~ApplicationWindow()
{
    // A program that leaves its event loop without closing the window has an app that still runs.
    _frameTimer.stop();
    stopCurrentApp();
    // The camera's callback thread ends before the docks and fields that it reaches are gone.
    _camera.reset();
}

/// Asks the camera library for the saved capture mode and opens the camera with it.
void ApplicationWindow::openCamera()
{
    const AppSettings& settings = AppSettings::instance();
    // Deliberately unchecked: without a match the record stays as it is, and the camera starts without a mode.
    EnumerateResolutions(&_currentResolution, 1, settings.width, settings.height, settings.binning, settings.fps);
    _camera = std::make_unique<VYRCameraDevice>(_currentResolution.binning, _currentResolution.width,
                                                _currentResolution.height, _currentResolution.fps);
}

void ApplicationWindow::startSavedApp()
{
    changeApp(startAppIndex(AppSettings::instance().currentApp));
}

void ApplicationWindow::showCurrentAppInTitle()
{
    if (AppInterface* const app = currentApp())
        setWindowTitle(QLatin1String(Identity::applicationName) + QStringLiteral(" - ") + app->name());
}

void ApplicationWindow::startPolling()
{
    // Direct: the field itself sees to the thread, so that a text set here is there when the call returns.
    connect(
        _camera.get(), &VYRCameraDevice::InfoChanged, this,
        [this](const QString& text) { statusText(0)->setStatusText(text); }, Qt::DirectConnection);
    connect(&_frameTimer, &QTimer::timeout, this, &ApplicationWindow::frameUpdate);
    _frameTimer.start(0);
}

QDockWidget* ApplicationWindow::centralDock()
{
    return _centralDock;
}

QDockWidget* ApplicationWindow::sideDock()
{
    return _rightDock;
}

QDockWidget* ApplicationWindow::bottomDock()
{
    return _bottomDock;
}

StatusBarText* ApplicationWindow::statusText(int index)
{
    return _statusFields[index == 0 ? 0 : 1];
}

VYRCameraDevice* ApplicationWindow::cameraDevice()
{
    return _camera.get();
}

VYRResolutionInfo ApplicationWindow::currentResolution()
{
    return _currentResolution;
}

void ApplicationWindow::changeResolution(VYRResolutionInfo newResolution)
{
    _frameTimer.stop();
    stopCurrentApp();
    _currentResolution = newResolution;
    _camera->SetResolution(newResolution.binning, newResolution.width, newResolution.height, newResolution.fps);
    startCurrentApp();
    _frameTimer.start(0);
}

void ApplicationWindow::changeApp(int appIndex)
{
    setCurrentApp(appIndex);
    showCurrentAppInTitle();
}

void ApplicationWindow::frameUpdate()
{
    pollCurrentApp();
}

void ApplicationWindow::onMenuAction(int actionID)
{
    switch (actionID) {
    case MenuExit:
        QApplication::closeAllWindows();
        break;
    case MenuApps:
    case MenuCamera:
    case MenuDevices:
        openSettingsDialog(settingsTab(actionID));
        break;
    case MenuAbout:
        QMessageBox::about(this, tr("About VYR Dashboard"), aboutText(!AppSettings::instance().useDarkSkin));
        break;
    case MenuDocumentation:
        QDesktopServices::openUrl(documentationUrl());
        break;
    default:
        break;
    }
}

/// The dialog's tabs are Apps, Camera, Devices; without apps the first is missing.
int ApplicationWindow::settingsTab(int actionID) const
{
    const int tab = actionID - MenuApps;
    return apps().isEmpty() && tab > 0 ? tab - 1 : tab;
}

bool ApplicationWindow::event(QEvent* event)
{
    return offerEvent(event) || QMainWindow::event(event);
}

void ApplicationWindow::closeEvent(QCloseEvent* event)
{
    _frameTimer.stop();
    // When all windows are closed, as at a logout, an app may be inside a call, waiting for a dialog that is closed as
    // well. It cannot be stopped before it has returned: the destruction of the window stops it, and then the camera.
    if (!isAppInsideCall()) {
        stopCurrentApp();
        _camera->StopProcessing();
    }
    saveSettings();
    event->accept();
    // An app may have windows of its own, with which the program would go on without this one. Not before this one is
    // closed. If one of them is just asking something, as whether to save, it is left to the user.
    QTimer::singleShot(0, this, [] {
        if (QApplication::activeModalWidget() == nullptr)
            QApplication::closeAllWindows();
    });
}

void ApplicationWindow::openSettingsDialog(int tab)
{
    if (isAppInsideCall())
        return; // it runs an event loop of its own, and whatever is changed would wait for its return for ever
    SettingsDialog dialog(this);
    dialog.setAppInfoList(appInfos());
    dialog.setCurrentAppIndex(currentAppIndex());
    dialog.build(tr("Settings"), this);
    addAppTabs(*dialog.tabWidget());
    dialog.setCurrentTab(tab);
    // An app may enter an event loop of its own while the dialog is open. What is chosen then waits for the return of
    // the app's call, which is before the dialog's.
    std::vector<std::function<void()>> waiting;
    const auto change = [&](const std::function<void()>& what) {
        if (isAppInsideCall())
            waiting.push_back(what);
        else
            what();
    };
    // Direct: the mode is in effect before the dialog goes on to the app.
    connect(
        &dialog, &SettingsDialog::ResolutionChanged, this,
        [&](const VYRResolutionInfo& mode) { change([=] { changeResolution(mode); }); }, Qt::DirectConnection);
    connect(
        &dialog, &SettingsDialog::AppChanged, this, [&](int app) { change([=] { changeApp(app); }); },
        Qt::DirectConnection);
    dialog.exec();
    if (!isVisible())
        return; // closed meanwhile, and nothing is started any more
    for (const std::function<void()>& what : waiting)
        what();
}

void ApplicationWindow::addAppTabs(QTabWidget& tabs)
{
    for (AppInterface* const app : apps())
        if (QWidget* const widget = app->createSettingsWidget(&tabs))
            tabs.addTab(widget, app->name());
}
