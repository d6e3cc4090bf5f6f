// SPDX-License-Identifier: Apache-2.0
// The size of the sensors and the window of them that a capture mode shows.

#pragma once

#include "include/VYR.h"

namespace simulator {

constexpr int sensorWidth = 752;  ///< columns of each sensor
constexpr int sensorHeight = 480; ///< rows of each sensor
constexpr int sensorArea = sensorWidth * sensorHeight;

/// Columns that one pixel of the picture is averaged from: 1, 2 or 4.
constexpr int horizontalBinning(int code)
{
    return 1 << (code & 3);
}

/// Rows that one pixel of the picture is averaged from: 1, 2 or 4.
constexpr int verticalBinning(int code)
{
    return 1 << ((code >> 2) & 3);
}

/// The part of the sensors that is read, in sensor pixels.
struct SensorWindow
{
    int x;
    int y;
    int width;
    int height;
};

/// The window of a supported mode: as many pixels as its binning asks for, around the middle of the sensor.
constexpr SensorWindow sensorWindow(const VYRResolutionInfo& mode)
{
    const int width = mode.width * horizontalBinning(mode.binning);
    const int height = mode.height * verticalBinning(mode.binning);
    return {(sensorWidth - width) / 2, (sensorHeight - height) / 2, width, height};
}

} // namespace simulator
