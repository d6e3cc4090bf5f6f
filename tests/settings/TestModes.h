// SPDX-License-Identifier: Apache-2.0
// The capture modes of a small camera, and what tests say about modes.

#pragma once

#include <camera/VYRResolutionInfo.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

#include <ostream>
#include <vector>

inline bool operator==(const VYRResolutionInfo& a, const VYRResolutionInfo& b)
{
    return a.width == b.width && a.height == b.height && a.binning == b.binning && !(a.fps < b.fps) && !(a.fps > b.fps)
        && !(a.minFps < b.minFps) && !(a.minFps > b.minFps) && !(a.maxFps < b.maxFps) && !(a.maxFps > b.maxFps);
}

inline std::ostream& operator<<(std::ostream& stream, const VYRResolutionInfo& mode)
{
    return stream << mode.width << 'x' << mode.height << " binning " << mode.binning << " at " << mode.fps << " ["
                  << mode.minFps << ", " << mode.maxFps << ']';
}

/// Binnings 1x1, 2x2 and 4x4; 360 rows only up to 640 columns.
inline std::vector<VYRResolutionInfo> testModes()
{
    return {
        {752, 480, 0, 30.0F, 0.5F, 60.0F},  {640, 480, 0, 30.0F, 0.5F, 60.0F},  {640, 360, 0, 40.0F, 1.0F, 80.0F},
        {320, 480, 0, 30.0F, 0.5F, 60.0F},  {320, 240, 0, 50.0F, 1.0F, 100.0F}, {376, 240, 5, 30.0F, 0.5F, 120.0F},
        {320, 240, 5, 30.0F, 0.5F, 120.0F}, {188, 120, 10, 20.0F, 1.0F, 25.0F},
    };
}

inline VYRResolutionInfo mode752x480()
{
    return testModes().at(0);
}

inline VYRResolutionInfo mode640x480()
{
    return testModes().at(1);
}

/// Moves the mouse with the left button held, as the window system would, wherever the real cursor is.
inline void moveMouse(QWidget* widget, QPoint position)
{
    QMouseEvent move(QEvent::MouseMove, position, widget->mapToGlobal(position), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &move);
}
