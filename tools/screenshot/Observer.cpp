// SPDX-License-Identifier: Apache-2.0
// Watches the running program's window until live frames are on it, and takes its picture.

#include "Observer.h"

#include "ScreenPicture.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr int lookInterval = 250;   // ms
constexpr qint64 patience = 60'000; // ms
constexpr int enoughMovements = 3;

QMainWindow* mainWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* const window = qobject_cast<QMainWindow*>(widget);
        if (window != nullptr && window->isVisible())
            return window;
    }
    return nullptr;
}

/// The first status text that is not empty.
QString statusText(const QMainWindow& window)
{
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (qobject_cast<const QStatusBar*>(label->parentWidget()) != nullptr && !label->text().isEmpty())
            return label->text();
    return QString();
}

/// Whether the simulator was told to be a camera.
bool isCameraWanted()
{
    return qgetenv("VYR_SOURCE") != "none";
}

/// A coloured status text is rich text, a plain one is taken as it stands, its runs of spaces included.
QString withoutMarkUp(const QString& status)
{
    return Qt::mightBeRichText(status) ? QTextDocumentFragment::fromHtml(status).toPlainText() : status;
}

double frameRateIn(const QString& status)
{
    static const QRegularExpression pattern("FPS: +([0-9.]+)");
    return pattern.match(status).captured(1).toDouble();
}

QImage centralPicture(const QMainWindow& window)
{
    const QWidget* const central = window.centralWidget();
    return screenPicture(window).copy(QRect(central->mapTo(&window, QPoint(0, 0)), central->size()));
}

} // namespace

Observer::Observer(QString pictureFile, QObject* parent)
    : QObject(parent)
    , _pictureFile(std::move(pictureFile))
{
    connect(&_timer, &QTimer::timeout, this, &Observer::look);
    _timer.start(lookInterval);
    _elapsed.start();
}

void Observer::look()
{
    QMainWindow* const window = mainWindow();
    const QString status = window != nullptr ? statusText(*window) : QString();
    if (status.contains(QCoreApplication::translate("ApplicationWindow", "No VYR Camera Found")))
        return isCameraWanted() ? giveUp(status) : finish(*window, status);
    if (_elapsed.elapsed() > patience)
        return giveUp(status);
    if (window == nullptr || frameRateIn(status) <= 0.0)
        return;

    const QImage picture = centralPicture(*window);
    if (!_lastPicture.isNull() && picture != _lastPicture)
        ++_movements;
    _lastPicture = picture;
    if (_movements >= enoughMovements)
        finish(*window, status);
}

void Observer::finish(QMainWindow& window, const QString& status)
{
    _timer.stop();
    if (!screenPicture(window).save(_pictureFile))
        std::fprintf(stderr, "Cannot write %s\n", qPrintable(_pictureFile));
    std::printf("%s\n", withoutMarkUp(status).toUtf8().constData());
    std::fflush(stdout);
    emit taken(&window);
}

void Observer::giveUp(const QString& status)
{
    std::fprintf(stderr, "No live frames after %lld s; status text: \"%s\"\n", _elapsed.elapsed() / 1000,
                 qPrintable(status));
    std::_Exit(1); // frames may be on their way: nothing is torn down under them
}
