// SPDX-License-Identifier: Apache-2.0
// The camera library libVYR.so, as the host calls it.

#pragma once

#include "VYRFrameRecord.h"
#include "VYRResolutionInfo.h"

/// Parameters of __VYRParamGet__ and __VYRParamSet__, with the arguments that follow the id.
enum VYRParameter : int {
    VYRDeviceName = 2,        ///< get: char buffer[256], zero-terminated text
    VYRSerialNumber = 3,      ///< get: char buffer[256]
    VYRFirmwareVersion = 4,   ///< get: char buffer[256]
    VYRFirmwareBuildTime = 5, ///< get: char buffer[256]
    VYRResolution = 6,        ///< set: VYRResolutionInfo by value
    VYRFrameSize = 7,         ///< get: int* width, int* height, in pixels
    VYRExposure = 8,          ///< set: double value, then int 0
    VYRGain = 9,              ///< set: double value
    VYRHorizontalFlip = 10,   ///< set: int flag
    VYRVerticalFlip = 11,     ///< set: int flag
    VYRSwapCameras = 12,      ///< set: int flag
    VYRLed = 13,              ///< set: double brightness
    VYRUndistort = 17,        ///< set: int flag
    VYRParameter18 = 18,      ///< get: one pointer
    VYRParameter19 = 19,      ///< get: one pointer
    VYRImuRange = 20          ///< set: VYRAccelRange, VYRGyroRange
};

/// The size of the buffers that text parameters are read into, in bytes.
constexpr int VYRTextSize = 256;

/// A criterion of EnumerateResolutions() that any mode meets.
constexpr int VYRAny = -1;
constexpr float VYRAnyFps = -1.0F;

extern "C" {

/// Called once per frame on a thread of the library. Must not call back into the library.
using VYRFrameCallback = void (*)(const VYRFrameRecord* record, void* userData);

// All of these are called on the GUI thread only. Names and signatures are the library's.
// NOLINTBEGIN(bugprone-reserved-identifier)

/// Opens the camera and writes its handle; false when none can be opened.
bool OpenVYR(void** handle);

void CloseVYR(void* handle);

/// Starts streaming to `callback`. The host always passes true as the last argument.
bool StartVYR(void* handle, VYRFrameCallback callback, void* userData, bool enabled);

/// Stops streaming.
bool StopVYR(void* handle);

/// Fills at most `capacity` records with the modes that match the criteria and returns their number; VYRAny and
/// VYRAnyFps match everything. Writes nothing when none matches.
int EnumerateResolutions(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps);

/// The library's version text; may be null.
const char* GetLibVersion();

int __VYRParamGet__(void* handle, int id, ...);
int __VYRParamSet__(void* handle, int id, ...);

// NOLINTEND(bugprone-reserved-identifier)

} // extern "C"
