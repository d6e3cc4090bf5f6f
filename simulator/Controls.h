// SPDX-License-Identifier: Apache-2.0
// The camera's controls, as last set.

#pragma once

namespace simulator {

/// What the receiver asked of the picture and of the inertial sensors. A value.
struct Controls
{
    double exposure = 0.0; ///< 1 to 100 % of the longest exposure; 0 automatic
    double gain = 0.0;     ///< 1 to 100, 50 neutral; 0 automatic
    double led = 0.0;      ///< 0 (off) to 100 %
    bool horizontalFlip = false;
    bool verticalFlip = false;
    bool swapCameras = false;
    bool undistort = false;
    int accelRange = 0; ///< VYRAccelRange
    int gyroRange = 0;  ///< VYRGyroRange
};

/// A number set by a receiver, brought into 0 to 100; what is no number becomes 0.
double percentOf(double value);

/// What the picture's grey values are multiplied by for exposure and gain: 1 when both are automatic.
/// An exposure of 50 is the automatic one, and the picture is in proportion to it. A gain of 50 is the automatic one,
/// and 25 more doubles the picture.
double brightnessFactor(const Controls& controls);

} // namespace simulator
