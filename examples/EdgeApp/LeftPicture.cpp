// SPDX-License-Identifier: Apache-2.0
// Where the left picture is in the camera library's frame record.

#include "LeftPicture.h"

#include <VYRFrame1.h>

#include <cstdint>
#include <cstring>

#include <dlfcn.h>

bool canReadPictures()
{
    // Looked up rather than linked with, so that the app also loads beside a camera library that has no such function.
    using LayoutFunction = const char* (*)();
    const auto layout = reinterpret_cast<LayoutFunction>(dlsym(RTLD_DEFAULT, "VYRFrameLayout"));
    return layout != nullptr && std::strcmp(layout(), VYR_FRAME_1_LAYOUT) == 0;
}

std::optional<GreyPicture> leftPictureOf(const VYRFrameRecord* record)
{
    constexpr int largestSide = 16384; // pixels; no camera of this kind has more
    if (record == nullptr)
        return std::nullopt;
    const auto& frame = *reinterpret_cast<const VYRFrame1*>(record);
    if (frame.recordSize < sizeof(VYRFrame1) || frame.bitsPerPixel != 8 || frame.left.pixels == nullptr)
        return std::nullopt;
    if (frame.width < 1 || frame.width > largestSide || frame.height < 1 || frame.height > largestSide)
        return std::nullopt;
    if (frame.bytesPerRow < static_cast<std::uint32_t>(frame.width))
        return std::nullopt;
    return GreyPicture{frame.left.pixels, frame.width, frame.height, frame.bytesPerRow};
}
