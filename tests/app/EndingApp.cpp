// SPDX-License-Identifier: Apache-2.0
// An app that ends its host.

#include "EndingApp.h"

#include <QApplication>
#include <QFile>
#include <QTimer>

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
    QTimer::singleShot(0, this, [] {
        if (TEST_APP_EXITS != 0) {
            QCoreApplication::exit(7);
        } else {
            QApplication::closeAllWindows();
        }
    });
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
