// SPDX-License-Identifier: Apache-2.0
// The sensors beside the pictures: acceleration, rotation, temperature.

#pragma once

#include "include/VYRFrame1.h"

#include <cstdint>

namespace simulator {

/// Measures a camera that stands on a desk and warms up: 24 °C when it is opened, 41 °C in the end, half of the way
/// after less than three minutes.
///
/// Thread: one thread at a time.
class InertialUnit
{
public:
    /// Writes acceleration, rotation and temperature into a record and says there that they are. Readings come in the
    /// steps of 16-bit converters over the given ranges (VYRAccelRange, VYRGyroRange): a wider range is coarser.
    void measure(double secondsSinceOpen, int accelRange, int gyroRange, VYRFrame1& record);

private:
    float noise();

    std::uint32_t _random = 2463534242U;
};

/// Full scale of a VYRAccelRange in g, and of a VYRGyroRange in degrees per second.
float accelFullScale(int range);
float gyroFullScale(int range);

/// The temperature of the sensor so many seconds after it was opened, in degrees Celsius.
float sensorTemperature(double secondsSinceOpen);

} // namespace simulator
