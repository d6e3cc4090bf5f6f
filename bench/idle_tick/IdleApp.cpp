// SPDX-License-Identifier: Apache-2.0
// An app that never has anything to show.

#include "IdleApp.h"

#include "TickMeter.h"

#include <QIcon>

void IdleApp::initialize(HostEnvironmentInterface*)
{
}

bool IdleApp::requiresCamera()
{
    return true;
}

QString IdleApp::name()
{
    return QStringLiteral("Idle");
}

QString IdleApp::version()
{
    return QString();
}

QString IdleApp::description()
{
    return QString();
}

QIcon IdleApp::icon()
{
    return QIcon();
}

void IdleApp::start()
{
}

void IdleApp::stop()
{
}

bool IdleApp::updatePending()
{
    countTick();
    return false;
}

void IdleApp::update()
{
}

bool IdleApp::handleKeyEvent(QEvent*)
{
    return false;
}

QWidget* IdleApp::createSettingsWidget(QWidget*)
{
    return nullptr;
}
