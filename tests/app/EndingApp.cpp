// SPDX-License-Identifier: Apache-2.0
// An app that ends its host.

#include "EndingApp.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFont>
#include <QMainWindow>
#include <QTimer>

#include <stdexcept>

void EndingApp::initialize(HostEnvironmentInterface*)
{
}

bool EndingApp::requiresCamera()
{
    return false;
}

QString EndingApp::name()
{
    return QStringLiteral(TEST_APP_NAME);
}

QString EndingApp::version()
{
    return QString();
}

QString EndingApp::description()
{
    return QString();
}

QIcon EndingApp::icon()
{
    return QIcon();
}

void EndingApp::start()
{
    if (name() == QStringLiteral("Throw"))
        throw std::runtime_error("this app cannot start");
    if (name() == QStringLiteral("Witness"))
        bearWitness();
    QTimer::singleShot(0, this, [this] {
        if (name() == QStringLiteral("Exit"))
            QCoreApplication::exit(7);
        else if (name() == QStringLiteral("Minimised"))
            minimiseWindow();
        else
            QApplication::closeAllWindows();
    });
}

void EndingApp::bearWitness()
{
    QFile file(QCoreApplication::applicationDirPath() + "/witness");
    file.open(QIODevice::WriteOnly);
    const QString lines =
        QApplication::font().toString() + '\n' + QCoreApplication::translate("ApplicationWindow", "&Settings") + '\n';
    file.write(lines.toUtf8());
}

void EndingApp::minimiseWindow()
{
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMainWindow*>(window) != nullptr) {
            window->showMinimized();
            window->installEventFilter(this);
        }
    }
    QFile sign(QCoreApplication::applicationDirPath() + "/minimised");
    sign.open(QIODevice::WriteOnly);
}

bool EndingApp::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowStateChange && !qobject_cast<QWidget*>(watched)->isMinimized())
        QCoreApplication::exit(9);
    return false;
}

void EndingApp::stop()
{
    QFile::remove(QCoreApplication::applicationDirPath() + "/settings/DashboardSettings.cfg");
}

bool EndingApp::updatePending()
{
    return false;
}

void EndingApp::update()
{
}

bool EndingApp::handleKeyEvent(QEvent*)
{
    return false;
}

QWidget* EndingApp::createSettingsWidget(QWidget*)
{
    return nullptr;
}
