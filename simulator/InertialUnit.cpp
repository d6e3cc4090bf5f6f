// SPDX-License-Identifier: Apache-2.0
// The sensors beside the pictures: acceleration, rotation, temperature.

#include "InertialUnit.h"

#include <cmath>

namespace simulator {

namespace {

constexpr double coldTemperature = 24.0;
constexpr double warmTemperature = 41.0;
constexpr double warmUpSeconds = 240.0;
constexpr float converterSteps = 32768.0F;

constexpr float accelNoise = 0.004F; // g
constexpr float gyroNoise = 0.06F;   // degrees per second
constexpr float temperatureNoise = 0.05F;

float converted(float value, float fullScale)
{
    const float step = fullScale / converterSteps;
    return std::round(value / step) * step;
}

} // namespace

float accelFullScale(int range)
{
    return 2.0F * static_cast<float>(1 << range);
}

float gyroFullScale(int range)
{
    return 250.0F * static_cast<float>(1 << range);
}

float sensorTemperature(double secondsSinceOpen)
{
    const double warmth = 1.0 - std::exp(-secondsSinceOpen / warmUpSeconds);
    return static_cast<float>(coldTemperature + (warmTemperature - coldTemperature) * warmth);
}

void InertialUnit::measure(double secondsSinceOpen, int accelRange, int gyroRange, VYRFrame1& record)
{
    constexpr float rest[3] = {0.0F, -1.0F, 0.0F}; // the desk pushes up
    for (int axis = 0; axis < 3; ++axis) {
        record.acceleration[axis] = converted(rest[axis] + accelNoise * noise(), accelFullScale(accelRange));
        record.rotation[axis] = converted(gyroNoise * noise(), gyroFullScale(gyroRange));
    }
    record.temperature = sensorTemperature(secondsSinceOpen) + temperatureNoise * noise();
    record.hasSensorData = 1;
}

float InertialUnit::noise()
{
    _random ^= _random << 13U;
    _random ^= _random >> 17U;
    _random ^= _random << 5U;
    return static_cast<float>(_random) / 2147483648.0F - 1.0F;
}

} // namespace simulator
