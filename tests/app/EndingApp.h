// SPDX-License-Identifier: Apache-2.0
// An app that ends its host.

#pragma once

#include <apps/AppInterface.h>

#include <QObject>

/// Ends its host as soon as its event loop runs: as "Close" it closes all windows, as "Exit" it leaves the
/// event loop with 7. As "Witness" it writes the program's font and the name of the settings menu, a line each, into a
/// file "witness" beside the program, and closes all windows. As "Throw" it throws in start(). As "Minimised" it
/// minimises the window, makes a file "minimised" beside the program, and leaves the event loop with 9 once somebody
/// has restored the window. When it is stopped it removes the settings file, so that one found later was written
/// afterwards.
class EndingApp : public QObject, public AppInterface
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

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void bearWitness();
    void minimiseWindow();
};
