// SPDX-License-Identifier: Apache-2.0
// An application object of which only one instance runs at a time.

#pragma once

#include <QApplication>
#include <QPointer>

#include <memory>

class QWidget;
class SingleInstance;

/// The application object of a program that its user starts once, whatever he clicks.
///
/// A program asks `isRunning()` first. When another instance runs it hands over what it was started for with
/// `sendMessage()` and ends; otherwise it goes on, and from then on gets the messages of later instances.
///
/// Instances belong together when they have the same identifier and the same user. An instance that crashed or
/// was killed does not stand in the way of the next one. Of several that start at once exactly one goes on.
///
/// Thread: GUI thread.
class QtSingleApplication : public QApplication
{
    Q_OBJECT

public:
    /// An application whose identifier is the path of its executable.
    ///
    /// `GUIenabled` is there for programs written against Qt 4 and has no effect.
    QtSingleApplication(int& argc, char** argv, bool GUIenabled = true);

    /// An application with an identifier of its own, to be one instance wherever its executable lies.
    QtSingleApplication(const QString& id, int& argc, char** argv);

    ~QtSingleApplication() override;

    QtSingleApplication(const QtSingleApplication&) = delete;
    QtSingleApplication& operator=(const QtSingleApplication&) = delete;

    /// Whether another instance runs. When none does, this one is the running instance from here on.
    bool isRunning();

    /// What tells this application from others.
    QString id() const;

    /// Sets the window that `activateWindow()` brings to the front; it is borrowed and may be deleted earlier.
    /// With `activateOnMessage` each message of a later instance does so.
    void setActivationWindow(QWidget* window, bool activateOnMessage = true);

    /// The window that was set, or null.
    QWidget* activationWindow() const;

    /// Does what `isRunning()` does. Obsolete.
    void initialize(bool dummy = true);

public Q_SLOTS:
    /// Sends a message to the running instance and waits until it has got it, for at most `timeout` milliseconds,
    /// or without an end when that is -1.
    ///
    /// True when the running instance has confirmed the message within that time. False otherwise, also when this
    /// is itself the running instance or when the message is larger than a mebibyte of UTF-8.
    bool sendMessage(const QString& message, int timeout = 5000);

    /// Raises and activates the activation window, and restores it if it is minimised.
    void activateWindow();

Q_SIGNALS:
    /// A later instance has sent this message.
    void messageReceived(const QString& message);

private:
    std::unique_ptr<SingleInstance> _instance;
    QPointer<QWidget> _activationWindow;
};
