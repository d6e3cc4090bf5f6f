// SPDX-License-Identifier: Apache-2.0
// Watches the running program's window until live frames are on it, and takes its picture.

#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QTimer>

class QMainWindow;

/// Looks at the program's main window a few times a second. Once the status bar tells a frame rate and the picture in
/// the central area moves, saves what is on the screen and prints the status text on standard output. After a minute
/// without that, or at once when there is no camera, says what it saw and ends the process with status 1; where no
/// camera is wanted, the window without one is what is saved. Thread: GUI thread.
class Observer : public QObject
{
    Q_OBJECT

public:
    explicit Observer(QString pictureFile, QObject* parent = nullptr);

signals:
    /// The picture of the window has been taken; once.
    void taken(QMainWindow* window);

private:
    void look();
    void finish(QMainWindow& window, const QString& status);
    void giveUp(const QString& status);

    QString _pictureFile;
    QTimer _timer;
    QElapsedTimer _elapsed;
    QImage _lastPicture;
    int _movements = 0; ///< how often the central picture was seen to differ from the one before
};
