// SPDX-License-Identifier: Apache-2.0
// A user of the program: what is on the screen, where it is clicked, and the tasks.

#include "User.h"

#include "CallLog.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int lookInterval = 20;    // ms
constexpr qint64 patience = 60'000; // ms

// --- what is on the screen ---------------------------------------------------------------------------------

bool isOnScreen(const QWidget* widget)
{
    if (widget == nullptr || !widget->isVisible())
        return false;
    const QWindow* const window = widget->window()->windowHandle();
    return window != nullptr && window->isExposed();
}

template<typename Window>
Window* windowOnScreen()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<Window*>(widget);
        if (isOnScreen(window))
            return window;
    }
    return nullptr;
}

template<typename Child>
Child* childOnScreen(const QWidget* parent)
{
    for (Child* child : parent->findChildren<Child*>())
        if (isOnScreen(child))
            return child;
    return nullptr;
}

QWidget* sensorOnScreen()
{
    for (QWidget* child : windowOnScreen<QDialog>()->findChildren<QWidget*>())
        if (child->inherits("ResolutionVisualization") && isOnScreen(child))
            return child;
    return nullptr;
}

/// Width, height, frame rate: from top to bottom.
QList<QSpinBox*> numbersOnScreen()
{
    QList<QSpinBox*> boxes = windowOnScreen<QDialog>()->findChildren<QSpinBox*>();
    std::sort(boxes.begin(), boxes.end(), [](const QSpinBox* a, const QSpinBox* b) {
        return a->mapToGlobal(QPoint(0, 0)).y() < b->mapToGlobal(QPoint(0, 0)).y();
    });
    return boxes;
}

QString editorText()
{
    QStringList values;
    for (const QSpinBox* box : numbersOnScreen())
        values << box->text();
    values << childOnScreen<QComboBox>(windowOnScreen<QDialog>())->currentText();
    return values.join(' ');
}

/// The camera's status text.
QString statusText()
{
    for (const QLabel* label : windowOnScreen<QMainWindow>()->statusBar()->findChildren<QLabel*>())
        if (label->text().startsWith("Resolution"))
            return label->text();
    return QString();
}

/// Whether the status text tells a mode and a frame rate that was measured in it.
bool isLive(const QString& mode)
{
    static const QRegularExpression frameRate("FPS: +([0-9.]+)");
    const QMainWindow* const window = windowOnScreen<QMainWindow>();
    if (window == nullptr || windowOnScreen<QDialog>() != nullptr)
        return false;
    const QString status = statusText();
    return status.startsWith(mode) && frameRate.match(status).captured(1).toDouble() > 0.0;
}

QString pictureSize()
{
    const auto* const label = windowOnScreen<QMainWindow>()->findChild<QLabel*>("pictureSizeLabel");
    return label != nullptr ? label->text() : QString();
}

bool showsTab(const QString& title)
{
    const QDialog* const dialog = windowOnScreen<QDialog>();
    const QTabWidget* const tabs = dialog != nullptr ? dialog->findChild<QTabWidget*>() : nullptr;
    return tabs != nullptr && tabs->tabText(tabs->currentIndex()) == title;
}

void see(const QString& what)
{
    noteCall("sees " + what.toStdString());
}

void seeMainWindow()
{
    see("status " + statusText());
    see("title " + windowOnScreen<QMainWindow>()->windowTitle());
    see("picture " + pictureSize());
}

// --- mouse and keyboard ------------------------------------------------------------------------------------

QWindow* windowOf(const QWidget* widget)
{
    return widget->window()->windowHandle();
}

QPoint inWindow(const QWidget* widget, QPoint point)
{
    return widget->mapTo(widget->window(), point);
}

void click(const QWidget* widget, QPoint point)
{
    QTest::mouseClick(windowOf(widget), Qt::LeftButton, Qt::NoModifier, inWindow(widget, point));
}

void click(const QWidget* widget)
{
    click(widget, widget->rect().center());
}

void drag(const QWidget* widget, QPoint from, QPoint to)
{
    QWindow* const window = windowOf(widget);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, inWindow(widget, from));
    QTest::mouseMove(window, inWindow(widget, (from + to) / 2));
    QTest::mouseMove(window, inWindow(widget, to));
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, inWindow(widget, to));
}

QAction* actionNamed(const QList<QAction*>& actions, const QString& name)
{
    for (QAction* action : actions)
        if (action->text().remove('&') == name)
            return action;
    return nullptr;
}

/// Drags the right edge of the capture window towards the centre.
void dragRightEdge(int byPixels)
{
    const QWidget* const sensor = sensorOnScreen();
    const int sensorWidth = sensor->property("sensorResolution").toSize().width();
    const int windowWidth = sensor->width() * numbersOnScreen().first()->value() / sensorWidth;
    const QPoint edge((sensor->width() + windowWidth) / 2 - 1, sensor->height() / 2);
    drag(sensor, edge, edge - QPoint(byPixels, 0));
}

void chooseInOpenList(const QString& text)
{
    const QAbstractItemView* const list = childOnScreen<QComboBox>(windowOnScreen<QDialog>())->view();
    QWindow* const window = windowOf(list);
    const int rows = list->model()->rowCount();
    for (int row = 0; row < rows && list->currentIndex().data().toString() != text; ++row)
        QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Return);
}

void typeFrameRate(const QByteArray& digits)
{
    const QSpinBox* const box = numbersOnScreen().last();
    click(box, QPoint(10, box->height() / 2));
    QTest::keyClick(windowOf(box), Qt::Key_A, Qt::ControlModifier);
    for (const char digit : digits)
        QTest::keyClick(windowOf(box), digit);
    QTest::keyClick(windowOf(box), Qt::Key_Tab);
}

void clickTab(const QString& title)
{
    const QTabWidget* const tabs = windowOnScreen<QDialog>()->findChild<QTabWidget*>();
    for (int index = 0; index < tabs->count(); ++index) {
        if (tabs->tabText(index) == title) {
            click(tabs->tabBar(), tabs->tabBar()->tabRect(index).center());
            return;
        }
    }
}

QPoint appInList(const QListWidget* list, const QString& name)
{
    return list->visualItemRect(list->findItems(name, Qt::MatchExactly).value(0)).center();
}

void clickApp(const QString& name)
{
    const auto* const list = childOnScreen<QListWidget>(windowOnScreen<QDialog>());
    click(list->viewport(), appInList(list, name));
}

void doubleClickApp(const QString& name)
{
    const auto* const list = childOnScreen<QListWidget>(windowOnScreen<QDialog>());
    QTest::mouseDClick(windowOf(list), Qt::LeftButton, Qt::NoModifier,
                       inWindow(list->viewport(), appInList(list, name)));
}

void clickOk()
{
    click(windowOnScreen<QDialog>()->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
}

bool always()
{
    return true;
}

} // namespace

User::User(const QString& task, QObject* parent)
    : QObject(parent)
{
    if (task == "change")
        planChange();
    else if (task == "check")
        planCheck();
    else
        planLook();
    _waiting.start();
    lookLater();
}

// --- the tasks ---------------------------------------------------------------------------------------------

void User::planChange()
{
    plan(
        "waits for pictures", [] { return isLive("Resolution: 640x480") && pictureSize().contains("640"); },
        seeMainWindow);
    planMenu("Settings", "Camera");
    planCaptureMode();
    plan("goes to the apps", always, [] { clickTab("Apps"); });
    plan(
        "selects Witness", [] { return showsTab("Apps"); }, [] { clickApp("Witness"); });
    plan("presses Ok", always, clickOk);
    plan(
        "waits for the new mode", [] { return isLive("Resolution: 256x240"); }, seeMainWindow);
    planMenu("File", "Exit");
}

void User::planCaptureMode()
{
    plan(
        "drags the right edge", [] { return showsTab("Camera"); }, [] { dragRightEdge(40); });
    plan("opens the list of binnings", always, [] {
        see("editor " + editorText());
        click(childOnScreen<QComboBox>(windowOnScreen<QDialog>()));
    });
    plan(
        "chooses a binning", [] { return isOnScreen(childOnScreen<QComboBox>(windowOnScreen<QDialog>())->view()); },
        [] { chooseInOpenList("2x2"); });
    plan(
        "types a frame rate", [] { return QApplication::activePopupWidget() == nullptr; },
        [] {
            see("editor " + editorText());
            typeFrameRate("24");
            see("editor " + editorText());
        });
}

void User::planCheck()
{
    plan(
        "waits for the mode of before", [] { return isLive("Resolution: 256x240"); }, seeMainWindow);
    planMenu("Settings", "Apps");
    plan(
        "double-clicks Stereo View", [] { return showsTab("Apps"); }, [] { doubleClickApp("Stereo View"); });
    plan(
        "waits for pictures", [] { return isLive("Resolution") && pictureSize().contains("256"); }, seeMainWindow);
    planMenu("File", "Exit");
}

void User::planLook()
{
    plan(
        "waits for the frame rate", [] { return isLive("Resolution: 640x480"); }, seeMainWindow);
    plan("looks once more", always, seeMainWindow);
    planMenu("File", "Exit");
}

void User::planMenu(const QString& menu, const QString& entry)
{
    plan("opens the menu " + menu, always, [menu] {
        const QMenuBar* const bar = windowOnScreen<QMainWindow>()->menuBar();
        click(bar, bar->actionGeometry(actionNamed(bar->actions(), menu)).center());
    });
    const auto choose = [entry] {
        const auto* const open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        click(open, open->actionGeometry(actionNamed(open->actions(), entry)).center());
    };
    plan(
        "chooses " + entry, [] { return isOnScreen(QApplication::activePopupWidget()); }, choose, Acting::OpensDialog);
}

void User::plan(const QString& name, std::function<bool()> ready, std::function<void()> act, Acting acting)
{
    _steps.append({name, std::move(ready), std::move(act), acting});
}

// --- one step after the other ------------------------------------------------------------------------------

void User::lookLater()
{
    QTimer::singleShot(lookInterval, this, &User::look);
}

void User::look()
{
    if (_next == _steps.size())
        return;
    lookLater(); // first: a step that opens a dialog returns when that is closed
    if (_acting)
        return; // every event that is sent lets others come, this look among them
    const Step& step = _steps.at(_next);
    if (!step.ready()) {
        if (_waiting.elapsed() > patience)
            giveUp();
        return;
    }
    ++_next;
    _waiting.start();
    noteCall("user " + step.name.toStdString());
    _acting = step.acting == Acting::Returns;
    step.act();
    _acting = false;
}

void User::giveUp() const
{
    noteCall("user gives up: " + _steps.at(_next).name.toStdString());
    std::fprintf(stderr, "The user %s in vain\n", qPrintable(_steps.at(_next).name));
    std::_Exit(3);
}
