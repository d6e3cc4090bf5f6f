// SPDX-License-Identifier: Apache-2.0
// What the user has chosen in Stereo View.

#pragma once

#include "PictureArrangement.h"

/// The user's choices, kept between runs. A value.
struct ViewChoices
{
    int exposure = 0; ///< 0 to 100; 0 leaves it to the camera
    int gain = 0;     ///< 0 to 100; 0 leaves it to the camera
    int led = 0;      ///< 0 to 100; 0 is off
    bool horizontalFlip = false;
    bool verticalFlip = false;
    bool swapCameras = false;
    bool undistort = false;
    PictureArrangement arrangement = PictureArrangement::SideBySide;
};

bool operator==(const ViewChoices& a, const ViewChoices& b);

/// The stored choices. Numbers beyond 0 to 100 are the nearest end; what is missing or makes no sense is as in a fresh
/// ViewChoices: a flag is on for "true" and "1" only.
ViewChoices loadViewChoices();

/// Stores the choices for the next start. A store that cannot be written is let go: the next one may work.
void storeViewChoices(const ViewChoices& choices);
