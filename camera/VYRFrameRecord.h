// SPDX-License-Identifier: Apache-2.0
// A frame as the camera library hands it over.

#pragma once

#include <cstddef>
#include <cstdint>

/// The camera library's record of one frame, as far as the host knows it: read-only, owned by the library, and valid
/// for as long as the library says. The bytes in between, the pictures among them, are the library's own; how one
/// library lays them out is in VYRFrame1.
struct VYRFrameRecord
{
    unsigned char libraryBytes0[12];  ///< the library's own
    std::uint32_t timestamp;          ///< units of 100 µs, increasing; may start again
    unsigned char libraryBytes16[8];  ///< the library's own
    std::uint8_t hasSensorData;       ///< non-zero when `temperature` was measured with this frame
    unsigned char libraryBytes25[39]; ///< the library's own
    float temperature;                ///< of the sensor, degrees Celsius
};

static_assert(offsetof(VYRFrameRecord, timestamp) == 12, "fixed by the camera library");
static_assert(offsetof(VYRFrameRecord, hasSensorData) == 24, "fixed by the camera library");
static_assert(offsetof(VYRFrameRecord, temperature) == 64, "fixed by the camera library");
