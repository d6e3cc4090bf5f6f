// SPDX-License-Identifier: Apache-2.0
// The app "Frame Counter".

#pragma once

#include <apps/AppInterface.h>

#include <QObject>

#include <memory>

class FrameCountNode;
class QLabel;

/// Shows in the main area how many frames have come from the camera.
class FirstApp : public QObject, public AppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vyrtech.AppInterface")
    Q_INTERFACES(AppInterface)

public:
    FirstApp();
    ~FirstApp() override;

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

private:
    HostEnvironmentInterface* _host = nullptr;
    std::unique_ptr<FrameCountNode> _node; ///< while started
    QLabel* _label = nullptr;              ///< in the central dock while started
    int _framesShown = 0;
};
