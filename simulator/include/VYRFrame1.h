/* SPDX-License-Identifier: Apache-2.0 */
/* The frame record of the layout "VYR-frame-1": what a receiver reads pictures and sensor data from. C and C++. */
#pragma once

/* C has no other headers and type names than these. */
/* NOLINTBEGIN(modernize-deprecated-headers, modernize-use-using) */

#include <stddef.h>
#include <stdint.h>

/** What VYRFrameLayout() returns when the records have this layout. */
#define VYR_FRAME_1_LAYOUT "VYR-frame-1"

/** A picture's address in a place of 8 bytes, so that the record is the same on 32 and 64 bit. */
typedef union VYRPicturePlace {
    const uint8_t* pixels; /**< first pixel of the top row */
    uint64_t place;        /**< the same as a number, for who copies records */
} VYRPicturePlace;

/**
 * One pair of pictures and what was measured with it. Owned by the library, read-only.
 *
 * Thread: written before the callback that brings it, unchanged while the next 63 frames are made.
 */
typedef struct VYRFrame1
{
    uint32_t recordSize;   /**< bytes of this record: 80 */
    int32_t width;         /**< pixels per row */
    int32_t height;        /**< rows */
    uint32_t timestamp;    /**< when the frame was due, in units of 100 us since OpenVYR */
    uint32_t frameCounter; /**< frames due since StartVYR; a jump tells of missed ones */
    uint32_t bytesPerRow;  /**< from one row to the next: the width, rounded up to a multiple of 16 */
    uint8_t hasSensorData; /**< not 0: the last three fields were measured. Else they are 0 */
    uint8_t bitsPerPixel;  /**< 8: grey values */
    uint8_t reserved26[6]; /**< 0 */
    VYRPicturePlace left;  /**< the left picture: height rows of bytesPerRow bytes; good as long as the record */
    VYRPicturePlace right; /**< the right picture, likewise */
    float acceleration[3]; /**< in g; x to the right, y down, z ahead: at rest 0, -1, 0 */
    uint8_t reserved60[4]; /**< 0 */
    float temperature;     /**< of the sensor, in degrees Celsius */
    float rotation[3];     /**< in degrees per second about the same axes */
} VYRFrame1;

#ifdef __cplusplus
static_assert(sizeof(VYRPicturePlace) == 8, "a picture's place has 8 bytes everywhere");
static_assert(offsetof(VYRFrame1, recordSize) == 0, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, width) == 4, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, height) == 8, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, timestamp) == 12, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, frameCounter) == 16, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, bytesPerRow) == 20, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, hasSensorData) == 24, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, bitsPerPixel) == 25, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, left) == 32, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, right) == 40, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, acceleration) == 48, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, temperature) == 64, "VYR-frame-1");
static_assert(offsetof(VYRFrame1, rotation) == 68, "VYR-frame-1");
static_assert(sizeof(VYRFrame1) == 80, "VYR-frame-1");
#endif

/* NOLINTEND(modernize-deprecated-headers, modernize-use-using) */
