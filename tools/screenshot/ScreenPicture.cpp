// SPDX-License-Identifier: Apache-2.0
// What the screen shows of a window.

#include "ScreenPicture.h"

#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <QWindow>

QImage screenPicture(const QWidget& window)
{
    return window.windowHandle()->screen()->grabWindow(window.winId()).toImage();
}
