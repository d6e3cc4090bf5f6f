// SPDX-License-Identifier: Apache-2.0
// A small host for apps under test.

#include "TestHost.h"

#include <apps/AppInterface.h>

#include <QDockWidget>
#include <QEvent>
#include <QPluginLoader>
#include <QStatusBar>

void TestStatusField::setStatusText(QString text)
{
    lastText = text;
    lastColor = QColor();
    setText(text);
}

void TestStatusField::setStatusTextColored(QString text, QColor color)
{
    lastText = text;
    lastColor = color;
    setText(QStringLiteral("<font color=%2>%1</font>").arg(text, color.name()));
}

void TestStatusField::setStatusVisible(bool visible)
{
    setVisible(visible);
}

TestHost::TestHost(const VYRResolutionInfo& mode)
    : _mode(mode)
    , _camera(mode.binning, mode.width, mode.height, mode.fps)
{
    resize(1200, 670);
    _centralDock = addDock(Qt::NoDockWidgetArea);
    _centralDock->setMinimumSize(400, 1);
    setCentralWidget(_centralDock);
    _bottomDock = addDock(Qt::BottomDockWidgetArea);
    addDockWidget(Qt::BottomDockWidgetArea, _bottomDock);
    _bottomDock->hide();
    _sideDock = addDock(Qt::RightDockWidgetArea);
    _sideDock->setMinimumSize(275, 1);
    _sideDock->setMaximumWidth(400);
    addDockWidget(Qt::RightDockWidgetArea, _sideDock);
    statusBar()->addPermanentWidget(&_field0, 1);
    statusBar()->addPermanentWidget(&_field1, 10);
    connect(&_camera, &VYRCameraDevice::InfoChanged, &_field0, &QLabel::setText);
    connect(&_timer, &QTimer::timeout, this, &TestHost::poll);
    show();
}

TestHost::~TestHost()
{
    stop();
    _camera.StopProcessing();
    delete _plugin;
}

QDockWidget* TestHost::addDock(Qt::DockWidgetArea area)
{
    auto* const dock = new QDockWidget(this);
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setAllowedAreas(area);
    dock->setAutoFillBackground(true);
    dock->setContentsMargins(0, 0, 0, 0);
    dock->setTitleBarWidget(new QWidget);
    return dock;
}

AppInterface* TestHost::load(const QString& path)
{
    QPluginLoader loader(path);
    _plugin = loader.instance();
    _app = qobject_cast<AppInterface*>(_plugin);
    if (_app == nullptr)
        qWarning("%s", qPrintable(loader.errorString()));
    else
        _app->initialize(this);
    return _app;
}

void TestHost::start()
{
    _app->start();
    _started = true;
    _timer.start(0);
}

void TestHost::stop()
{
    _timer.stop();
    if (_started)
        _app->stop();
    _started = false;
}

void TestHost::changeMode(const VYRResolutionInfo& newMode)
{
    stop();
    _mode = newMode;
    _camera.SetResolution(newMode.binning, newMode.width, newMode.height, newMode.fps);
    start();
}

bool TestHost::event(QEvent* event)
{
    if (event->type() == QEvent::KeyPress && _started && _app->handleKeyEvent(event))
        return true;
    return QMainWindow::event(event);
}

void TestHost::poll()
{
    if (_app->updatePending())
        _app->update();
}
