// SPDX-License-Identifier: Apache-2.0
// Opens the settings dialog and takes a picture of each tab.

#include "SettingsTour.h"

#include "ScreenPicture.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QTabWidget>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int lookInterval = 250;   // ms
constexpr qint64 patience = 60'000; // ms

QAction* actionNamed(const QMainWindow& window, const QString& text)
{
    for (QAction* action : window.findChildren<QAction*>())
        if (action->text() == text)
            return action;
    return nullptr;
}

QDialog* dialogOnScreen()
{
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    const QWindow* const window = dialog != nullptr ? dialog->windowHandle() : nullptr;
    return window != nullptr && window->isExposed() ? dialog : nullptr;
}

} // namespace

SettingsTour::SettingsTour(const QString& folder, QObject* parent)
    : QObject(parent)
    , _folder(folder)
{
}

void SettingsTour::start(QMainWindow* window)
{
    _window = window;
    _elapsed.start();
    lookLater();
    if (QAction* const action = actionNamed(*window, "Apps"))
        QTimer::singleShot(0, action, &QAction::trigger); // which returns when the dialog is closed
}

void SettingsTour::lookLater()
{
    QTimer::singleShot(lookInterval, this, &SettingsTour::look);
}

void SettingsTour::look()
{
    if (_elapsed.elapsed() > patience) {
        std::fprintf(stderr, "No settings dialog after %lld s\n", patience / 1000);
        std::exit(1);
    }
    lookLater();
    QDialog* const dialog = dialogOnScreen();
    auto* const tabs = dialog != nullptr ? dialog->findChild<QTabWidget*>() : nullptr;
    if (tabs == nullptr)
        return;
    if (!_begun) {
        _begun = true;
        return showTab(*tabs, 0);
    }

    const QImage picture = screenPicture(*dialog);
    const bool still = picture == _lastPicture;
    _lastPicture = picture;
    if (!still)
        return;
    const QString title = tabs->tabText(tabs->currentIndex()).toLower();
    const QString file = QString("%1/settings-%2.png").arg(_folder, title);
    if (!picture.save(file))
        std::fprintf(stderr, "Cannot write %s\n", qPrintable(file));
    if (tabs->currentIndex() + 1 < tabs->count())
        showTab(*tabs, tabs->currentIndex() + 1);
    else
        finish(*dialog);
}

void SettingsTour::showTab(QTabWidget& tabs, int index)
{
    _lastPicture = QImage();
    tabs.setCurrentIndex(index);
}

void SettingsTour::finish(QDialog& dialog)
{
    dialog.reject();
    QTimer::singleShot(0, _window, &QMainWindow::close);
}
