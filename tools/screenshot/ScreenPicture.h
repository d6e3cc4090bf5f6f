// SPDX-License-Identifier: Apache-2.0
// What the screen shows.

#pragma once

#include <QImage>

class QRect;
class QWidget;

/// The contents of a visible window as they are on the screen.
/// Thread: GUI thread.
QImage screenPicture(const QWidget& window);

/// A part of the screen, whichever windows are there.
/// Thread: GUI thread.
QImage screenPicture(const QRect& place);
