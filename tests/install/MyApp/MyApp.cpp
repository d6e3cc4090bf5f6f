// SPDX-License-Identifier: Apache-2.0
// An app in one source that does nothing.

#include <apps/AppInterface.h>

#include <QObject>

class MyApp : public QObject, public AppInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.vyrtech.AppInterface")
    Q_INTERFACES(AppInterface)

public:
    void initialize(HostEnvironmentInterface*) override {}
    bool requiresCamera() override { return false; }
    QString name() override { return QStringLiteral("Mine"); }
    QString version() override { return QStringLiteral("1.0"); }
    QString description() override { return QStringLiteral("Does nothing."); }
    QIcon icon() override { return QIcon(); }
    void start() override {}
    void stop() override {}
    bool updatePending() override { return false; }
    void update() override {}
    bool handleKeyEvent(QEvent*) override { return false; }
    QWidget* createSettingsWidget(QWidget*) override { return nullptr; }
};

#include "MyApp.moc"
