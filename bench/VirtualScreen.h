// SPDX-License-Identifier: Apache-2.0
// A screen for windows that nobody needs to see.

#pragma once

#include <QProcess>
#include <QString>

/// An X server of its own, Xvfb, that ends with this object. Needs an application object.
class VirtualScreen
{
public:
    /// Starts the server and waits until it takes clients. Says on standard error when there is none to start.
    VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;
    ~VirtualScreen();

    /// What DISPLAY has to be, as ":7"; empty when there is no server.
    const QString& display() const { return _display; }

private:
    QProcess _server;
    QString _display;
};
