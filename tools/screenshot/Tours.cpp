// SPDX-License-Identifier: Apache-2.0
// The ways that are taken through the program. They are found as a user finds them, by what is to be read on the
// screen, and gone with mouse and keys.

#include "Tours.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace {

using Tour = std::vector<TourStop>;

// --- what is on the screen ---------------------------------------------------------------------------------

template<typename Window>
Window* windowOnScreen()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<Window*>(widget);
        if (window != nullptr && window->isVisible() && window->windowHandle()->isExposed())
            return window;
    }
    return nullptr;
}

QMainWindow& mainWindow()
{
    return *windowOnScreen<QMainWindow>();
}

QRect placeOf(const QWidget* widget)
{
    return widget == nullptr ? QRect() : QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

/// The main window, while no dialog and no menu is open.
QRect placeOfMainWindow()
{
    const bool alone = QApplication::activePopupWidget() == nullptr && QApplication::activeModalWidget() == nullptr;
    return alone ? placeOf(windowOnScreen<QMainWindow>()) : QRect();
}

QRect placeOfDialog()
{
    return placeOf(windowOnScreen<QDialog>());
}

/// The part of the window with the menu bar and the open menu.
QRect placeOfMenu()
{
    const QRect menu = placeOf(windowOnScreen<QMenu>());
    if (menu.isEmpty())
        return menu;
    constexpr QSize part(420, 150);
    return {placeOf(&mainWindow()).topLeft(), part};
}

QRect placeOfPictures()
{
    return placeOfMainWindow().isEmpty() ? QRect() : placeOf(mainWindow().centralWidget());
}

QComboBox* arrangementBox()
{
    return mainWindow().findChild<QComboBox*>(QStringLiteral("arrangement"));
}

/// The app's controls beside the pictures: the dock that holds the list of arrangements.
QRect placeOfPanel()
{
    if (placeOfMainWindow().isEmpty())
        return {};
    for (const QDockWidget* dock : mainWindow().findChildren<QDockWidget*>())
        if (dock->isAncestorOf(arrangementBox()))
            return placeOf(dock);
    return {};
}

QTabWidget* tabs()
{
    const QDialog* const dialog = windowOnScreen<QDialog>();
    return dialog == nullptr ? nullptr : dialog->findChild<QTabWidget*>();
}

QString fileNameOf(const QString& title)
{
    return QString(title).remove('&').toLower().replace(' ', '-');
}

// --- mouse and keyboard ------------------------------------------------------------------------------------

void click(const QWidget& widget, QPoint point)
{
    QWidget* const window = widget.window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, widget.mapTo(window, point));
}

void click(const QWidget& widget)
{
    click(widget, widget.rect().center());
}

QAction* actionNamed(const QWidget& place, const QString& name)
{
    for (QAction* action : place.actions())
        if (action->text().remove('&') == name)
            return action;
    return nullptr;
}

void openMenu(const QString& name)
{
    const QMenuBar& bar = *mainWindow().menuBar();
    click(bar, bar.actionGeometry(actionNamed(bar, name)).center());
}

void closeMenu()
{
    QTest::keyClick(windowOnScreen<QMenu>()->windowHandle(), Qt::Key_Escape);
}

void chooseEntry(const QString& name)
{
    const QMenu& menu = *windowOnScreen<QMenu>();
    click(menu, menu.actionGeometry(actionNamed(menu, name)).center());
}

void clickTab(const QString& title)
{
    const QTabBar& bar = *tabs()->tabBar();
    for (int index = 0; index < bar.count(); ++index)
        if (bar.tabText(index) == title)
            click(bar, bar.tabRect(index).center());
}

void clickButton(QDialogButtonBox::StandardButton button)
{
    click(*windowOnScreen<QDialog>()->findChild<QDialogButtonBox*>()->button(button));
}

void chooseNextArrangement()
{
    QTest::keyClick(arrangementBox(), Qt::Key_Down);
}

void chooseFirstArrangement()
{
    QTest::keyClick(arrangementBox(), Qt::Key_Home);
}

/// Turns the wheel over the picture, a little to the left and above its middle.
void zoomIn()
{
    constexpr int notches = 8;
    constexpr int notch = 120;
    QWidget* const view = static_cast<const QDockWidget*>(mainWindow().centralWidget())->widget();
    const QPointF point(view->width() * 0.2, view->height() * 0.45);
    for (int i = 0; i < notches; ++i) {
        QWheelEvent event(point, view->mapToGlobal(point.toPoint()), QPoint(), QPoint(0, notch), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view, &event);
    }
}

// --- parts of the ways -------------------------------------------------------------------------------------

Tour menuStops(const QString& name)
{
    return {{"menu-" + fileNameOf(name), [name] { openMenu(name); }, placeOfMenu, true},
            {QString(), closeMenu, placeOfMainWindow, true}};
}

/// Up to the dialog that a menu's entry opens; pictured under that name.
Tour dialogStops(const QString& menu, const QString& entry, const QString& picture)
{
    return {{QString(), [menu] { openMenu(menu); }, placeOfMenu, true},
            {picture, [entry] { chooseEntry(entry); }, placeOfDialog, false}};
}

Tour tabStops()
{
    Tour stops;
    for (const char* title : {"Camera", "Devices"})
        stops.push_back({"settings-" + fileNameOf(title), [title] { clickTab(title); }, placeOfDialog, false});
    stops.push_back({QString(), [] { clickButton(QDialogButtonBox::Cancel); }, placeOfMainWindow, true});
    return stops;
}

/// The arrangements in the order in which Stereo View offers them. The first one is in the picture of the window, and
/// the right picture looks as the left one does.
Tour viewStops()
{
    Tour stops = {{"panel", [] {}, placeOfPanel, true}};
    for (const char* name : {"view-one-above-the-other", "view-left-only", "", "view-anaglyph", "view-difference"})
        stops.push_back({name, chooseNextArrangement, placeOfPictures, true, true});
    stops.push_back({QString(), chooseFirstArrangement, placeOfPictures, true});
    stops.push_back({"view-zoomed", zoomIn, placeOfPictures, true});
    return stops;
}

Tour exitStops()
{
    return {{QString(), [] { openMenu("File"); }, placeOfMenu, true},
            {QString(), [] { chooseEntry("Exit"); }, [] { return QRect(); }, true}};
}

Tour joined(std::initializer_list<Tour> parts)
{
    Tour stops;
    for (const Tour& part : parts)
        stops.insert(stops.end(), part.begin(), part.end());
    return stops;
}

} // namespace

Tour tourOfProgram()
{
    return joined({menuStops("File"),
                   menuStops("Settings"),
                   menuStops("Help"),
                   dialogStops("Settings", "Apps", "settings-apps"),
                   tabStops(),
                   dialogStops("Help", "About", "about"),
                   {{QString(), [] { clickButton(QDialogButtonBox::Ok); }, placeOfMainWindow, true}},
                   viewStops(),
                   exitStops()});
}

Tour tourOfWindow(const QString& name)
{
    return joined({{{name, [] {}, placeOfMainWindow, false}}, exitStops()});
}

Tour tourToDocumentation()
{
    return joined({{{QString(), [] {}, placeOfMainWindow, true}},
                   {{QString(), [] { openMenu("Help"); }, placeOfMenu, true}},
                   {{QString(), [] { chooseEntry("Documentation"); }, placeOfMainWindow, true}},
                   exitStops()});
}
