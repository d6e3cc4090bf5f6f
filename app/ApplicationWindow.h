// SPDX-License-Identifier: Apache-2.0
// The main window: the host in which the current app draws.

#pragma once

#include "UIApplicationWindow.h"

#include <apps/AppManager.h>
#include <apps/HostEnvironmentInterface.h>
#include <camera/VYRResolutionInfo.h>

#include <QMainWindow>
#include <QTimer>

#include <memory>

class QTabWidget;

/// The one top-level window: docks, menus, status bar, the camera node, the apps and the timer that polls them.
///
/// Making it reads the settings file, opens the camera, loads the apps and starts one. Closing it stops the app and
/// the camera and writes the settings file; deleting one that was never closed stops them too. The app is told to stop
/// once, however often the window is closed. What it found at the start, apps and camera, stays what it has.
///
/// Ownership: owns the camera node; is the host of all apps.
/// Thread: GUI thread. The camera's status text comes from the camera callback thread too, which the status field
/// sees to.
class ApplicationWindow :
    public QMainWindow,
    public UIApplicationWindow,
    public HostEnvironmentInterface,
    public AppManager
{
    Q_OBJECT

public:
    ApplicationWindow();
    ~ApplicationWindow() override;

    QDockWidget* centralDock() override;
    QDockWidget* sideDock() override;
    QDockWidget* bottomDock() override;
    StatusBarText* statusText(int index) override;
    VYRCameraDevice* cameraDevice() override;
    VYRResolutionInfo currentResolution() override;

    /// Gives the camera another capture mode, with the current app and the timer stopped meanwhile.
    void changeResolution(VYRResolutionInfo newResolution);

    /// Makes another app current and names it in the title.
    void changeApp(int appIndex);

public slots:
    /// Polls the current app.
    void frameUpdate();

    /// Does what a menu entry stands for (a MenuAction); other numbers do nothing.
    void onMenuAction(int actionID);

protected:
    /// Key presses go to the current app first.
    bool event(QEvent* event) override;

    void closeEvent(QCloseEvent* event) override;

private:
    void openCamera();
    void startSavedApp();
    void showCurrentAppInTitle();
    void startPolling();
    int settingsTab(int actionID) const;
    void openSettingsDialog(int tab);
    void addAppTabs(QTabWidget& tabs);

    QTimer _frameTimer;
    std::unique_ptr<VYRCameraDevice> _camera;
    VYRResolutionInfo _currentResolution{};
};
