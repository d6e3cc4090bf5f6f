// SPDX-License-Identifier: Apache-2.0
// What the main window is made of: docks, status fields and menus.

#include "UIApplicationWindow.h"

#include "CStatus.h"
#include "Identity.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QDockWidget>
#include <QGuiApplication>
#include <QIcon>
#include <QMainWindow>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSignalMapper>
#include <QStatusBar>
#include <QStyle>

/// Outside of any namespace, as the resource system wants it.
static void initIconResource()
{
    Q_INIT_RESOURCE(icon);
}

namespace {

constexpr int forEver = 0;

const char fileMenu[] = QT_TRANSLATE_NOOP("ApplicationWindow", "&File");
const char settingsMenu[] = QT_TRANSLATE_NOOP("ApplicationWindow", "&Settings");
const char helpMenu[] = QT_TRANSLATE_NOOP("ApplicationWindow", "&Help");

/// A dock that stays where it is and shows nothing but what is set into it.
QDockWidget* makeDock(QMainWindow* window)
{
    auto* const dock = new QDockWidget(window);
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setAutoFillBackground(true);
    dock->setContentsMargins(0, 0, 0, 0);
    dock->setTitleBarWidget(new QWidget(dock));
    return dock;
}

void centreOnScreen(QMainWindow* window)
{
    window->setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, window->size(),
                                            QGuiApplication::primaryScreen()->availableGeometry()));
}

} // namespace

QList<MenuEntry> menuEntries(bool hasApps, bool hasCamera)
{
    // Unlike the menus' titles these are the same in every language, so that a manual, or somebody on the telephone,
    // can name an entry whichever language it is.
    QList<MenuEntry> entries = {{fileMenu, QStringLiteral("Exit"), MenuExit}};
    if (hasApps)
        entries.append({settingsMenu, QStringLiteral("Apps"), MenuApps});
    if (hasCamera) {
        entries.append({settingsMenu, QStringLiteral("Camera"), MenuCamera});
        entries.append({settingsMenu, QStringLiteral("Devices"), MenuDevices});
    }
    entries.append({helpMenu, QStringLiteral("About"), MenuAbout});
    entries.append({helpMenu, QStringLiteral("Documentation"), MenuDocumentation});
    return entries;
}

void UIApplicationWindow::setupUi(QMainWindow* window, bool hasApps, bool hasCamera)
{
    initIconResource();
    window->setWindowTitle(QLatin1String(Identity::applicationName));
    window->resize(1200, 670);
    const QIcon icon(QStringLiteral(":/default.ico"));
    window->setWindowIcon(icon);
    QApplication::setWindowIcon(icon); // for the dialogs, to which a window's own does not extend
    centreOnScreen(window);
    window->setAnimated(false);
    setupDocks(window);
    setupStatusFields(window);
    setupMenus(window, hasApps, hasCamera);
}

void UIApplicationWindow::setupDocks(QMainWindow* window)
{
    _centralDock = makeDock(window);
    _centralDock->setMinimumSize(400, 1);
    window->setCentralWidget(_centralDock);

    _bottomDock = makeDock(window);
    _bottomDock->setAllowedAreas(Qt::BottomDockWidgetArea);
    window->addDockWidget(Qt::BottomDockWidgetArea, _bottomDock);
    _bottomDock->hide();

    _rightDock = makeDock(window);
    _rightDock->setAllowedAreas(Qt::RightDockWidgetArea);
    _rightDock->setMinimumSize(275, 1);
    _rightDock->setMaximumWidth(400);
    window->addDockWidget(Qt::RightDockWidgetArea, _rightDock);
}

void UIApplicationWindow::setupStatusFields(QMainWindow* window)
{
    QStatusBar* const bar = window->statusBar();
    _statusFields[0] = new CStatus(forEver, bar);
    _statusFields[0]->setStyleSheet(QStringLiteral("margin-left:4px;"));
    bar->addPermanentWidget(_statusFields[0], 1);

    _statusFields[1] = new CStatus(1000, bar);
    _statusFields[1]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    bar->addPermanentWidget(_statusFields[1], 10);
}

void UIApplicationWindow::setupMenus(QMainWindow* window, bool hasApps, bool hasCamera)
{
    const auto addMenu = [window](const char* title) {
        return window->menuBar()->addMenu(QCoreApplication::translate("ApplicationWindow", title));
    };
    QMap<QString, QMenu*> menus;
    menus[fileMenu] = addMenu(fileMenu);
    if (hasApps || hasCamera)
        menus[settingsMenu] = addMenu(settingsMenu);
    menus[helpMenu] = addMenu(helpMenu);

    _menuActions = new QSignalMapper(window);
    for (const MenuEntry& entry : menuEntries(hasApps, hasCamera)) {
        QMenu* const menu = menus.value(entry.menu);
        if (entry.actionID == MenuSeparator) {
            menu->addSeparator();
            continue;
        }
        auto* const action = new QAction(entry.text, window);
        menu->addAction(action);
        _menuActions->setMapping(action, entry.actionID);
        QObject::connect(action, &QAction::triggered, _menuActions, QOverload<>::of(&QSignalMapper::map));
    }
}
