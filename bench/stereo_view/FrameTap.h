// SPDX-License-Identifier: Apache-2.0
// Stands between camera library and host: notes when each frame arrives, and marks its left picture with its number.

#pragma once

#include <QRect>

#include <cstdint>

namespace FrameTap {

constexpr int markBits = 12;

/// Where a bit of the number stands in the left picture of 752 x 480: white for 1, black for 0.
constexpr QRect markOf(int bit)
{
    return {100 + 44 * bit, 200, 44, 44};
}

/// Monotonic nanoseconds.
std::int64_t now();

/// When the frame with this number, of the last 2^markBits, was handed to the host.
std::int64_t arrivalOf(std::uint32_t number);

/// How many frames have arrived.
std::uint32_t arrivals();

/// Processor time in nanoseconds of the thread that brings the frames, when it brought the latest.
std::int64_t cameraThreadTime();

} // namespace FrameTap
