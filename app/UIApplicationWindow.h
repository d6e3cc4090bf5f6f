// SPDX-License-Identifier: Apache-2.0
// What the main window is made of: docks, status fields and menus.

#pragma once

#include <QList>
#include <QString>

class CStatus;
class QDockWidget;
class QMainWindow;
class QMenu;
class QSignalMapper;

/// What the entries of the menus do.
enum MenuAction : int {
    MenuSeparator = 0, ///< no action: a line between entries
    MenuExit = 1,
    MenuApps = 2,
    MenuCamera = 3,
    MenuDevices = 4,
    MenuAbout = 5,
    MenuDocumentation = 6
};

/// An entry of a menu.
struct MenuEntry
{
    const char* menu; ///< the menu's title, before translation
    QString text;
    int actionID;
};

/// The entries of the menus, in their order, of a window with or without apps and camera.
QList<MenuEntry> menuEntries(bool hasApps, bool hasCamera);

/// The user-interface parts of the main window.
///
/// Ownership: everything is owned by the window it was set up for.
/// Thread: GUI thread.
class UIApplicationWindow
{
public:
    /// Builds the parts into a window, once. The menus are fixed from here on.
    void setupUi(QMainWindow* window, bool hasApps, bool hasCamera);

protected:
    ~UIApplicationWindow() = default;

    QDockWidget* _centralDock = nullptr;
    QDockWidget* _rightDock = nullptr;
    QDockWidget* _bottomDock = nullptr;
    CStatus* _statusFields[2] = {nullptr, nullptr};
    QSignalMapper* _menuActions = nullptr; ///< maps the menus' actions to their numbers

private:
    void setupDocks(QMainWindow* window);
    void setupStatusFields(QMainWindow* window);
    void setupMenus(QMainWindow* window, bool hasApps, bool hasCamera);
};
