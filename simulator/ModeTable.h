// SPDX-License-Identifier: Apache-2.0
// The capture modes that the camera supports.

#pragma once

#include "include/VYR.h"

namespace simulator {

/// The fastest frame rate of a mode that reads so many rows of the sensor. In proportion to the rows, since reading
/// them is what takes time: 60 for all of them, 250 at most.
float maximumFps(int rowsRead);

/// Writes the modes that match, at most `capacity`, and returns their number; see EnumerateResolutions() of VYR.h.
///
/// Thread: any thread. Nothing is kept: the table is a rule, and walking through it takes microseconds.
int enumerateModes(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps);

/// Whether the camera can stream in this mode at its frame rate. The record's own bounds are not looked at.
bool isSupported(const VYRResolutionInfo& mode);

} // namespace simulator
