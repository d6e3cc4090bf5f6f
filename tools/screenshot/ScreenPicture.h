// SPDX-License-Identifier: Apache-2.0
// What the screen shows of a window.

#pragma once

#include <QImage>

class QWidget;

/// The contents of a visible window as they are on the screen.
/// Thread: GUI thread.
QImage screenPicture(const QWidget& window);
