/* SPDX-License-Identifier: Apache-2.0 */
/* The operations of the camera library libVYR.so, as a program that links it calls them. C and C++. */
#pragma once

/* C has no other headers and type names than these, and the library's names are what they are. */
/* NOLINTBEGIN(bugprone-reserved-identifier, modernize-deprecated-headers, modernize-use-using) */

#include <stdbool.h>
#include <stdint.h>

#if defined(VYR_BUILDING_LIBRARY)
#define VYR_API __attribute__((visibility("default")))
#else
#define VYR_API
#endif

/** One frame as the callback gets it. Its layout has a name, which VYRFrameLayout() tells; see VYRFrame1.h. */
struct VYRFrameRecord;
typedef struct VYRFrameRecord VYRFrameRecord;

/** A capture mode. Passed by value to __VYRParamSet__. */
typedef struct VYRResolutionInfo
{
    int32_t width;   /**< picture width in pixels, after binning */
    int32_t height;  /**< picture height in pixels, after binning */
    int32_t binning; /**< bits 0-1: 1, 2 or 4 columns, bits 2-3: 1, 2 or 4 rows, as powers of two */
    float fps;       /**< frames per second */
    float minFps;    /**< slowest frame rate of this mode */
    float maxFps;    /**< fastest frame rate of this mode */
} VYRResolutionInfo;

/** Full scale of the accelerometer. */
typedef enum VYRAccelRange {
    VYR_ACCEL_RANGE_2G = 0,
    VYR_ACCEL_RANGE_4G = 1,
    VYR_ACCEL_RANGE_8G = 2,
    VYR_ACCEL_RANGE_16G = 3
} VYRAccelRange;

/** Full scale of the gyroscope, in degrees per second. */
typedef enum VYRGyroRange {
    VYR_GYRO_RANGE_250 = 0,
    VYR_GYRO_RANGE_500 = 1,
    VYR_GYRO_RANGE_1000 = 2,
    VYR_GYRO_RANGE_2000 = 3
} VYRGyroRange;

/** What __VYRParamGet__ and __VYRParamSet__ work on. What follows the id in the call stands beside it. */
typedef enum VYRParameter {
    VYRDeviceName = 2,        /**< get: char* to 256 bytes; zero-terminated text, as the next three */
    VYRSerialNumber = 3,      /**< get: char* to 256 bytes */
    VYRFirmwareVersion = 4,   /**< get: char* to 256 bytes */
    VYRFirmwareBuildTime = 5, /**< get: char* to 256 bytes */
    VYRResolution = 6,        /**< set: VYRResolutionInfo by value; from the next StartVYR on */
    VYRFrameSize = 7,         /**< get: int* width, int* height of the stream, or of the one to come */
    VYRExposure = 8,          /**< set: double, int 0; 1 to 100 % of the longest exposure, 0 automatic */
    VYRGain = 9,              /**< set: double; 1 to 100, 50 is neutral, 25 more doubles; 0 automatic */
    VYRHorizontalFlip = 10,   /**< set: int flag; each picture mirrored left to right */
    VYRVerticalFlip = 11,     /**< set: int flag; each picture upside down */
    VYRSwapCameras = 12,      /**< set: int flag; left and right picture change places */
    VYRLed = 13,              /**< set: double; 0 (off) to 100 % */
    VYRUndistort = 17,        /**< set: int flag */
    VYRParameter18 = 18,      /**< get: int32_t*; reserved, gives 0 */
    VYRParameter19 = 19,      /**< get: int32_t*; reserved, gives 0 */
    VYRImuRange = 20          /**< set: VYRAccelRange, VYRGyroRange */
} VYRParameter;

/** What the two parameter calls return. */
typedef enum VYRResult {
    VYRSuccess = 0,
    VYRNoCamera = -1,         /**< the handle is null or of a camera that is not open (any more) */
    VYRUnknownParameter = -2, /**< no such id in this direction */
    VYRValueRefused = -3      /**< a null pointer, an unsupported mode, an unknown range; nothing changed */
} VYRResult;

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Opens the camera that the environment variable VYR_SOURCE names (see README.md).
 *
 * False, with a null handle, when there is none, when it cannot be read (one line on standard error says
 * why), and while it is open already: as with a camera on a cable, one owner at a time.
 * Thread: any thread, as all operations here.
 */
VYR_API bool OpenVYR(void** handle);

/**
 * Closes the camera, stopping it first. Frame records and pictures are gone afterwards.
 * A null handle, or one closed before, does nothing.
 */
VYR_API void CloseVYR(void* handle);

/**
 * Starts streaming in the mode last set (752 x 480 at 30 frames per second before any was).
 *
 * The callback runs on the library's streaming thread, once per frame. The record and its pictures stay as
 * they are while the next 63 frames are made, and readable until CloseVYR. A callback that takes longer than
 * a frame misses frames (the frame counter jumps); it never gets them later in a burst.
 * Started while streaming, the camera is stopped and started again. The flag is reserved; pass true.
 * False without camera or callback, and from inside the callback.
 */
VYR_API bool StartVYR(void* handle, void (*callback)(const VYRFrameRecord* record, void* userData), void* userData,
                      bool flag);

/**
 * Stops streaming. When it returns, no callback runs and none will. It waits for one that runs, at most
 * 20 ms longer than that takes. From inside the callback it returns at once, and this callback is the last.
 * True when the camera is open, streaming or not.
 */
VYR_API bool StopVYR(void* handle);

/**
 * Writes the supported modes that match, at most `capacity`, and returns how many were written.
 *
 * -1 (-1.0f for the frame rate) means any. A frame rate matches when it lies within the bounds of a mode,
 * whose record then carries it; with any, the record carries 30 frames per second. Grouped by binning,
 * largest first. Needs no open camera. 0 for a null list or a capacity below 1.
 */
VYR_API int EnumerateResolutions(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps);

/** The library's version. Never null. */
VYR_API const char* GetLibVersion(void);

/** The name of the layout of the frame records: VYR_FRAME_1_LAYOUT of VYRFrame1.h. Never null. */
VYR_API const char* VYRFrameLayout(void);

/** Reads a parameter of VYRParameter; returns a value of VYRResult. */
VYR_API int __VYRParamGet__(void* handle, int id, ...);

/**
 * Sets a parameter of VYRParameter; returns a value of VYRResult. While streaming, everything but the
 * resolution takes effect with the next frame. Numbers beyond a range are taken as its nearest end.
 */
VYR_API int __VYRParamSet__(void* handle, int id, ...);

#ifdef __cplusplus
}
#endif

/* NOLINTEND(bugprone-reserved-identifier, modernize-deprecated-headers, modernize-use-using) */
