// SPDX-License-Identifier: Apache-2.0
// An app that never has anything to show.

#pragma once

#include <apps/AppInterface.h>

#include <QObject>

/// Counts how often it is asked. It requires a camera, so that it is there only when the window has one.
class IdleApp : public QObject, public AppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vyrtech.AppInterface")
    Q_INTERFACES(AppInterface)

public:
    void initialize(HostEnvironmentInterface* host) override;
    bool requiresCamera() override;
    QString name() override;
    QString version() override;
    QString description() override;
    QIcon icon() override;
    void start() override;
    void stop() override;
    bool updatePending() override;
    void update() override;
    bool handleKeyEvent(QEvent* event) override;
    QWidget* createSettingsWidget(QWidget* parent) override;
};
