// SPDX-License-Identifier: Apache-2.0
// Leads through the running program and takes pictures on the way.

#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QRect>
#include <QString>

#include <functional>
#include <vector>

/// One place to go to, and the picture that is taken there.
struct TourStop
{
    QString picture;                ///< name of the file, without its ending; empty where none is taken
    std::function<void()> go;       ///< what the user does to get there; may return only when a dialog is closed again
    std::function<QRect()> subject; ///< what is to be seen, on the screen; empty until it is there
    bool isMoving = false;          ///< whether it never comes to rest, as live pictures do not
    bool isReduced = false;         ///< whether the picture is made half as wide and high
};

/// Goes from stop to stop. Saves each as FOLDER/PICTURE.png as soon as its subject is on the screen and, unless it
/// is a moving one, rests. After a minute without that, ends the process with status 1.
/// Thread: GUI thread.
class PictureTour : public QObject
{
    Q_OBJECT

public:
    PictureTour(QString folder, std::vector<TourStop> stops, QObject* parent = nullptr);

    /// To be called once. The last stop is expected to end the program.
    void start();

private:
    void goOn();
    void lookLater();
    void look();
    void save(const QImage& picture);

    QString _folder;
    std::vector<TourStop> _stops;
    std::size_t _current = 0;
    QElapsedTimer _elapsed; ///< since the user went to the current stop
    QImage _lastPicture;    ///< of the current stop; null at first
};
