// SPDX-License-Identifier: Apache-2.0
// An app that notes in which mode it is started and what frames reach it.

#pragma once

#include <apps/AppInterface.h>

#include <QObject>

#include <memory>

class SizeNode;

/// The app "Witness". Its node runs behind the camera node, as that of any app does. VYR_TEST_TROUBLE names what it
/// does badly: "start" takes two seconds while the camera runs, or its "worker" keeps the first frame until the stop.
class WitnessApp : public QObject, public AppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vyrtech.AppInterface")
    Q_INTERFACES(AppInterface)

public:
    WitnessApp();
    ~WitnessApp() override;

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
    std::unique_ptr<SizeNode> _node; ///< while started
};
