// SPDX-License-Identifier: Apache-2.0
// Opens the settings dialog and takes a picture of each tab.

#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QPointer>

class QDialog;
class QMainWindow;
class QTabWidget;

/// Opens the settings dialog through the program's own menu entry, saves each tab as FOLDER/settings-TITLE.png
/// as soon as the screen shows it unchanging, and closes dialog and window. After a minute without that, ends
/// the process with status 1.
/// Thread: GUI thread.
class SettingsTour : public QObject
{
    Q_OBJECT

public:
    explicit SettingsTour(const QString& folder, QObject* parent = nullptr);

    /// To be called once, when `window` is on the screen.
    void start(QMainWindow* window);

private:
    void lookLater();
    void look();
    void showTab(QTabWidget& tabs, int index);
    void finish(QDialog& dialog);

    QString _folder;
    QPointer<QMainWindow> _window;
    QElapsedTimer _elapsed;
    QImage _lastPicture; ///< of the tab that is shown; null right after a change
    bool _begun = false;
};
