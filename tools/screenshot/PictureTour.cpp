// SPDX-License-Identifier: Apache-2.0
// Leads through the running program and takes pictures on the way.

#include "PictureTour.h"

#include "ScreenPicture.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr int lookInterval = 250;   // ms
constexpr qint64 patience = 60'000; // ms

} // namespace

PictureTour::PictureTour(QString folder, std::vector<TourStop> stops, QObject* parent)
    : QObject(parent)
    , _folder(std::move(folder))
    , _stops(std::move(stops))
{
}

void PictureTour::start()
{
    goOn();
}

void PictureTour::goOn()
{
    _lastPicture = QImage();
    _elapsed.start();
    lookLater();
    QTimer::singleShot(0, this, _stops[_current].go);
}

void PictureTour::lookLater()
{
    QTimer::singleShot(lookInterval, this, &PictureTour::look);
}

void PictureTour::look()
{
    const TourStop& stop = _stops[_current];
    if (_elapsed.elapsed() > patience) {
        std::fprintf(stderr, "Stop %zu of the tour (%s) not reached after %d s\n", _current + 1,
                     qPrintable(stop.picture), static_cast<int>(patience / 1000));
        std::_Exit(1); // frames may be on their way: nothing is torn down under them
    }
    const QRect subject = stop.subject();
    if (subject.isEmpty())
        return lookLater();
    const QImage picture = screenPicture(subject);
    const bool isReady = !_lastPicture.isNull() && (stop.isMoving || picture == _lastPicture);
    _lastPicture = picture;
    if (!isReady)
        return lookLater();
    if (!stop.picture.isEmpty())
        save(picture);
    if (++_current < _stops.size())
        goOn();
}

void PictureTour::save(const QImage& picture)
{
    const TourStop& stop = _stops[_current];
    const QString file = QString("%1/%2.png").arg(_folder, stop.picture);
    const QSize size = stop.isReduced ? picture.size() / 2 : picture.size();
    if (picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).save(file))
        return;
    std::fprintf(stderr, "Cannot write %s\n", qPrintable(file));
    std::_Exit(1);
}
