// SPDX-License-Identifier: Apache-2.0
// A small host for apps under test.

#pragma once

#include <apps/HostEnvironmentInterface.h>
#include <apps/StatusBarText.h>
#include <camera/VYRCameraDevice.h>

#include <QColor>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

class AppInterface;
class QDockWidget;

/// A status field that keeps its last text and colour.
class TestStatusField : public QLabel, public StatusBarText
{
public:
    void setStatusText(QString text) override;
    void setStatusTextColored(QString text, QColor color) override;
    void setStatusVisible(bool visible) override;

    QString lastText;
    QColor lastColor; ///< invalid for a text without colour
};

/// A window with docks, fields and a camera node like the program's, which polls one app whenever it is idle and
/// passes it the keys pressed.
class TestHost : public QMainWindow, public HostEnvironmentInterface
{
public:
    /// A window of 1200 × 670, shown, with a camera that has been asked for `mode`.
    explicit TestHost(const VYRResolutionInfo& mode);
    ~TestHost() override;

    /// The app in the shared library at `path`, initialized; null when it is none. Once for each host, which deletes
    /// the app in the end: the next host gets a fresh one.
    AppInterface* load(const QString& path);

    /// Starts the app and the polling, and stops both.
    void start();
    void stop();

    /// As the program changes the capture mode: stop, new mode, start.
    void changeMode(const VYRResolutionInfo& newMode);

    TestStatusField& field(int index) { return index == 0 ? _field0 : _field1; }

    QDockWidget* centralDock() override { return _centralDock; }
    QDockWidget* sideDock() override { return _sideDock; }
    QDockWidget* bottomDock() override { return _bottomDock; }
    StatusBarText* statusText(int index) override { return &field(index); }
    VYRCameraDevice* cameraDevice() override { return &_camera; }
    VYRResolutionInfo currentResolution() override { return _mode; }

protected:
    bool event(QEvent* event) override;

private:
    QDockWidget* addDock(Qt::DockWidgetArea area);
    void poll();

    VYRResolutionInfo _mode;
    VYRCameraDevice _camera;
    QDockWidget* _centralDock = nullptr;
    QDockWidget* _sideDock = nullptr;
    QDockWidget* _bottomDock = nullptr;
    TestStatusField _field0;
    TestStatusField _field1;
    QTimer _timer;
    QObject* _plugin = nullptr; ///< owned
    AppInterface* _app = nullptr;
    bool _started = false;
};
