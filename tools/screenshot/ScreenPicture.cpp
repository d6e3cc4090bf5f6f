// SPDX-License-Identifier: Apache-2.0
// What the screen shows.

#include "ScreenPicture.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <QWindow>

QImage screenPicture(const QWidget& window)
{
    return window.windowHandle()->screen()->grabWindow(window.winId()).toImage();
}

QImage screenPicture(const QRect& place)
{
    constexpr WId theWholeScreen = 0;
    return QGuiApplication::primaryScreen()
        ->grabWindow(theWholeScreen, place.x(), place.y(), place.width(), place.height())
        .toImage();
}
