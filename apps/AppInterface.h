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
///
/// During start(), stop(), updatePending(), update() and handleKeyEvent() the host holds its app lock, which is not
/// recursive: whatever switches or restarts apps waits for it, and called from in there for ever. While an event loop
/// runs in there, as in QDialog::exec() and QFileDialog::getOpenFileName(), the app is neither polled nor offered keys,
/// its picture stands still, and what the user chooses in the settings has to wait. Better show dialogs with
/// QDialog::open(), or from a slot of a widget of yours, for which no lock is held.
///
/// Ownership: the plug-in object belongs to Qt's plug-in loader.
/// Thread: GUI thread, all of it.
class AppInterface
{
public:
    /// Hands over the host, once. The docks and the status fields exist, and belong to whichever app is current: put
    /// nothing into them before start().
    /// Ownership: `host` is borrowed; it is never null, and stays valid, with all that it hands out, until the main
    /// window goes as the process ends. The plug-in object goes after that, and after the application object: its
    /// destructor must use neither the host nor a widget.
    virtual void initialize(HostEnvironmentInterface* host) = 0;

    /// Whether the app is of no use without a camera: then it is not loaded when none is open. Asked first.
    virtual bool requiresCamera() = 0;

    /// The app's name: in the window's title, in the settings dialog and in the settings file, by which the app is
    /// found again at the next start. Must be the same whenever it is asked for, and no other app's: of two, the first
    /// is found.
    virtual QString name() = 0;

    /// The app's own version, in any form. Asked once, while loading; shown as a tool tip in the settings dialog.
    virtual QString version() = 0;

    /// What the app is good for, in a line. Asked once, while loading; shown as a tool tip in the settings dialog.
    virtual QString description() = 0;

    /// Shown in the settings dialog at up to 72 × 72 pixels; a null icon shows none. Asked once, while loading.
    virtual QIcon icon() = 0;

    /// Never called; keeps the place of the operations behind it.
    virtual void reserved() {}

    /// The app becomes current, or the capture mode has changed: put widgets into the docks, start nodes and camera,
    /// the consumers before the camera. Never called twice without a stop() in between. When the app has become
    /// current, the bottom dock is hidden and both status fields are empty. The window waits for it.
    virtual void start() = 0;

    /// Another app becomes current, the capture mode is about to change, or the window closes: stop nodes and camera.
    /// The host waits for it, however long it takes, and stopping a node waits for its Process() to return: release
    /// first whatever a worker may be waiting for. Leave the docks without widgets of yours: the next app's would hide
    /// them, and nobody would delete them.
    virtual void stop() = 0;

    /// Whether update() has anything to draw. Polled whenever the event loop is idle, thousands of times a second, so
    /// it must be quick. Never called when the program was started without a camera.
    virtual bool updatePending() = 0;

    /// Draws what is new. Follows an updatePending() that was true, at once.
    virtual void update() = 0;

    /// A key was pressed in the main window, and no widget with the focus has used it up. `event` is a QKeyEvent of
    /// type QEvent::KeyPress, repetitions of a key held down included; it is borrowed. Returns true when the app has
    /// used it up, false to let the window go on with it.
    virtual bool handleKeyEvent(QEvent* event) = 0;

    /// A widget for a tab of the settings dialog, titled with name(), or null for no tab. Called each time the dialog
    /// is built, and for every app, the current one or not. The dialog's Ok and Cancel are not passed on: what is
    /// changed in the tab is the app's own affair, and so is keeping it. Ownership: `parent` owns the widget from then
    /// on, and deletes it with the dialog.
    virtual QWidget* createSettingsWidget(QWidget* parent) = 0;

protected:
    ~AppInterface() = default;
};

Q_DECLARE_INTERFACE(AppInterface, "com.vyrtech.AppInterface")
