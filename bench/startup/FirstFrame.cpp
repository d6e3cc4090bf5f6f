// SPDX-License-Identifier: Apache-2.0
// Watches a program until its main window has been painted.

#include "FirstFrame.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QImage>
#include <QMainWindow>
#include <QPixmap>
#include <QSet>

#include <cstdint>
#include <cstdio>
#include <ctime>

namespace {

struct Use
{
    std::int64_t time;
    std::int64_t processorTime;
    QByteArray resident;
    QByteArray peak;
};

std::int64_t now(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// The number behind a title in the process's status.
QByteArray numberOf(const QByteArray& status, const char* title)
{
    const int begin = status.indexOf(title);
    return status.mid(begin, status.indexOf('\n', begin) - begin).simplified().split(' ').value(1);
}

Use useSoFar()
{
    Use use = {now(CLOCK_MONOTONIC), now(CLOCK_PROCESS_CPUTIME_ID), {}, {}};
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    const QByteArray status = file.readAll();
    use.resident = numberOf(status, "VmRSS:");
    use.peak = numberOf(status, "VmHWM:");
    return use;
}

void print(const char* what, const Use& use)
{
    std::printf("%s %lld %lld %s %s\n", what, static_cast<long long>(use.time),
                static_cast<long long>(use.processorTime), use.resident.constData(), use.peak.constData());
    std::fflush(stdout);
}

/// A camera picture has many grey values in its middle, an empty area few.
bool showsPicture(QMainWindow& window)
{
    if (window.centralWidget() == nullptr)
        return false;
    const QImage image = window.centralWidget()->grab().toImage();
    QSet<QRgb> colours;
    for (int x = 0; x < image.width(); ++x)
        colours.insert(image.pixel(x, image.height() / 2));
    return colours.size() > 32;
}

} // namespace

FirstFrame::FirstFrame(bool waitsForPicture)
    : _waitsForPicture(waitsForPicture)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool FirstFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Paint || _looking || !watched->isWidgetType())
        return false;
    auto* const window = qobject_cast<QMainWindow*>(static_cast<QWidget*>(watched)->window());
    if (window != nullptr && (watched == window || _windowSeen)) {
        // Not before what paints has painted everything and given it to the screen.
        QMetaObject::invokeMethod(
            this, [this, window] { painted(window); }, Qt::QueuedConnection);
    }
    return false;
}

void FirstFrame::painted(QMainWindow* window)
{
    const Use use = useSoFar();
    if (!_windowSeen) {
        _windowSeen = true;
        print("window", use);
    }
    if (_waitsForPicture) {
        _looking = true;
        const bool shown = showsPicture(*window);
        _looking = false;
        if (!shown)
            return;
        print("picture", use);
    }
    QCoreApplication::instance()->removeEventFilter(this);
    window->close();
}
