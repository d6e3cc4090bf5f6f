// SPDX-License-Identifier: Apache-2.0
// An application object of which only one instance runs at a time.

#include "qtsingleapplication.h"

#include "SingleInstance.h"

#include <QWidget>

QtSingleApplication::QtSingleApplication(int& argc, char** argv, bool /*GUIenabled*/)
    : QtSingleApplication(QString(), argc, argv)
{
}

QtSingleApplication::QtSingleApplication(const QString& id, int& argc, char** argv)
    : QApplication(argc, argv)
    , _instance(std::make_unique<SingleInstance>(id.isEmpty() ? applicationFilePath() : id))
{
    connect(_instance.get(), &SingleInstance::messageReceived, this, &QtSingleApplication::messageReceived);
}

QtSingleApplication::~QtSingleApplication() = default;

bool QtSingleApplication::isRunning()
{
    return !_instance->claim();
}

QString QtSingleApplication::id() const
{
    return _instance->id();
}

void QtSingleApplication::setActivationWindow(QWidget* window, bool activateOnMessage)
{
    _activationWindow = window;
    disconnect(this, &QtSingleApplication::messageReceived, this, &QtSingleApplication::activateWindow);
    if (activateOnMessage)
        connect(this, &QtSingleApplication::messageReceived, this, &QtSingleApplication::activateWindow);
}

QWidget* QtSingleApplication::activationWindow() const
{
    return _activationWindow;
}

void QtSingleApplication::initialize(bool /*dummy*/)
{
    isRunning();
}

bool QtSingleApplication::sendMessage(const QString& message, int timeout)
{
    return isRunning() && _instance->send(message, timeout);
}

void QtSingleApplication::activateWindow()
{
    if (_activationWindow == nullptr)
        return;
    _activationWindow->setWindowState(_activationWindow->windowState() & ~Qt::WindowMinimized);
    _activationWindow->raise();
    _activationWindow->activateWindow();
}
