// SPDX-License-Identifier: Apache-2.0
// A capture mode of the camera.

#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// A capture mode, as the camera library fills it in and takes it by value. Nothing in it is checked before it reaches
/// the library: a mode that the camera does not have is one that it does not start in.
struct VYRResolutionInfo
{
    std::int32_t width;   ///< pixels of each picture, after binning
    std::int32_t height;  ///< pixels of each picture, after binning
    std::int32_t binning; ///< binning code, see BinningNames.h
    float fps;            ///< frames per second
    float minFps;         ///< the mode's least frames per second
    float maxFps;         ///< the mode's most frames per second
};

static_assert(sizeof(VYRResolutionInfo) == 24, "crosses the camera library's boundary by value");
static_assert(offsetof(VYRResolutionInfo, width) == 0, "fixed by the camera library");
static_assert(offsetof(VYRResolutionInfo, height) == 4, "fixed by the camera library");
static_assert(offsetof(VYRResolutionInfo, binning) == 8, "fixed by the camera library");
static_assert(offsetof(VYRResolutionInfo, fps) == 12, "fixed by the camera library");
static_assert(offsetof(VYRResolutionInfo, minFps) == 16, "fixed by the camera library");
static_assert(offsetof(VYRResolutionInfo, maxFps) == 20, "fixed by the camera library");
static_assert(std::is_trivially_copyable<VYRResolutionInfo>::value, "passed through variadic calls");
