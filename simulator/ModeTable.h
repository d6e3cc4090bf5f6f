// SPDX-License-Identifier: Apache-2.0
// The capture modes that the camera supports.

#pragma once

#include "include/VYR.h"

namespace simulator {

/// The fastest frame rate of a mode that reads so many rows of the sensor: reading them is what takes time. 60 for all
/// 480 of them, 250 for the fewest that a mode reads, 120.
float maximumFps(int rowsRead);

/// Writes the modes that match, at most `capacity`, and returns their number; see EnumerateResolutions() of VYR.h.
///
/// Thread: any thread. Nothing is kept: the table is a rule, and walking through it takes microseconds.
int enumerateModes(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps);

/// Whether the camera can stream in this mode at its frame rate. The record's own bounds are not looked at.
bool isSupported(const VYRResolutionInfo& mode);

} // namespace simulator
