// SPDX-License-Identifier: Apache-2.0
// What the host asks of an app.

#pragma once

#include <QIcon>
#include <QString>
#include <QtPlugin>

class HostEnvironmentInterface;
class QEvent;
class QWidget;

/// An app: a Qt plug-in in a library named *App.so beside the host's executable. One app is current at a time; it
/// draws into the host's docks and is polled for screen updates.
///
/// A life: loaded and asked who it is → initialize() → (start() … stop()) any number of times → end of the process.
/// While it is current it also gets updatePending(), update() and handleKeyEvent(). Apps are never unloaded.
///
/// An app that throws before it is accepted, by its constructor or while it is asked who it is, is left out as if it
/// were not there. What it throws later ends the process, as does what its library's static initializers throw.
///
/// The host calls by slot: the order of the operations is fixed, and there is no virtual destructor.
/// Ownership: the plug-in object belongs to Qt's plug-in loader.
/// Thread: GUI thread, all of it. During start(), stop(), updatePending(), update() and handleKeyEvent() the host holds
/// its app lock: do not call back into anything that switches apps.
class AppInterface
{
public:
    /// Hands over the host, once. The docks and the status fields exist; `host` stays valid until the process ends.
    virtual void initialize(HostEnvironmentInterface* host) = 0;

    /// Whether the app is of no use without a camera: then it is not loaded when none is open. Asked first.
    virtual bool requiresCamera() = 0;

    /// The app's name: in the window's title, in the settings dialog and in the settings file.
    virtual QString name() = 0;

    virtual QString version() = 0;
    virtual QString description() = 0;
    virtual QIcon icon() = 0;

    /// Never called; keeps the place of the operations behind it.
    virtual void reserved() {}

    /// The app becomes current, or the capture mode has changed: put widgets into the docks, start nodes and camera.
    virtual void start() = 0;

    /// Another app becomes current, the capture mode is about to change, or the window closes: stop nodes and camera.
    /// The host waits for it, however long it takes, and stopping a node waits for its Process() to return: release
    /// first whatever a worker may be waiting for.
    virtual void stop() = 0;

    /// Whether update() has anything to draw. Polled whenever the event loop is idle, so it must be quick.
    virtual bool updatePending() = 0;

    /// Draws what is new.
    virtual void update() = 0;

    /// A key was pressed in the main window. Returns true when the app has used it up.
    virtual bool handleKeyEvent(QEvent* event) = 0;

    /// A widget for a tab of the settings dialog, or null. Called each time the dialog is built; `parent` owns it.
    virtual QWidget* createSettingsWidget(QWidget* parent) = 0;

protected:
    ~AppInterface() = default;
};

Q_DECLARE_INTERFACE(AppInterface, "com.vyrtech.AppInterface")
