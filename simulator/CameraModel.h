// SPDX-License-Identifier: Apache-2.0
// The nominal optics of the camera: what a receiver needs to turn disparities into distances.

#pragma once

namespace simulator {

constexpr float focalLength = 460.0F; ///< pixels of the unbinned sensor
constexpr float centreX = 375.5F;     ///< where the optical axis meets the sensor: in its middle
constexpr float centreY = 239.5F;
constexpr float baseline = 0.12F; ///< metres from the left to the right lens

} // namespace simulator
