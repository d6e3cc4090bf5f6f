// SPDX-License-Identifier: Apache-2.0
// Everything that the simulated camera can do to a picture, at once.

#pragma once

#include <simulator/Controls.h>

inline simulator::Controls allControls()
{
    simulator::Controls controls;
    controls.exposure = 70.0;
    controls.led = 60.0;
    controls.horizontalFlip = true;
    controls.verticalFlip = true;
    controls.undistort = true;
    return controls;
}
