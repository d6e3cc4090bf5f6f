// SPDX-License-Identifier: Apache-2.0
// Stereo View in a host with the simulated camera.

#pragma once

#include "StereoViewFixture.h"

#include <camera/VYRLibrary.h>

/// Finds the modes of the simulated camera.
class StereoViewSimulatorFixture : public StereoViewFixture
{
protected:
    /// The first mode that meets the criteria, as EnumerateResolutions() takes them.
    static VYRResolutionInfo mode(int width, int height, int binning, float fps)
    {
        VYRResolutionInfo found{};
        if (EnumerateResolutions(&found, 1, width, height, binning, fps) != 1)
            ADD_FAILURE() << "the camera has no such mode";
        return found;
    }
};
