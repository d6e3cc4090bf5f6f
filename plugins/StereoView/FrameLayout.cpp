// SPDX-License-Identifier: Apache-2.0
// Where the pictures are in the camera library's frame record.

#include "FrameLayout.h"

#include <cstddef>
#include <cstring>
#include <limits>

#include <dlfcn.h>

namespace {

constexpr char knownLayout[] = "VYR-frame-1";

constexpr std::size_t recordSizeOffset = 0;
constexpr std::size_t widthOffset = 4;
constexpr std::size_t heightOffset = 8;
constexpr std::size_t frameCounterOffset = 16;
constexpr std::size_t bytesPerRowOffset = 20;
constexpr std::size_t bitsPerPixelOffset = 25;
constexpr std::size_t leftOffset = 32;
constexpr std::size_t rightOffset = 40;
constexpr std::uint32_t smallestRecord = 80; // bytes

constexpr int largestSide = 16384;              // pixels
constexpr std::uint32_t longestRow = 4 * 16384; // bytes

template<typename Value>
Value valueAt(const VYRFrameRecord* record, std::size_t offset)
{
    Value value;
    std::memcpy(&value, reinterpret_cast<const unsigned char*>(record) + offset, sizeof(value));
    return value;
}

/// Addresses have a place of 8 bytes in the record, on machines with 32 bits as well.
const unsigned char* pictureAt(const VYRFrameRecord* record, std::size_t offset)
{
    const auto place = valueAt<std::uint64_t>(record, offset);
    if (place > std::numeric_limits<std::uintptr_t>::max())
        return nullptr;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the record has numbers in the place of pointers
    return reinterpret_cast<const unsigned char*>(static_cast<std::uintptr_t>(place));
}

bool isSide(std::int32_t pixels)
{
    return pixels > 0 && pixels <= largestSide;
}

} // namespace

const char* frameLayoutName()
{
    // Looked up by name, so that an app also loads beside a camera library that does not have it. The camera node is
    // linked with the camera library, and so the default scope has the very library that the frames come from.
    using LayoutFunction = const char* (*)();
    const auto function = reinterpret_cast<LayoutFunction>(dlsym(RTLD_DEFAULT, "VYRFrameLayout"));
    return function == nullptr ? nullptr : function();
}

bool isFrameLayoutKnown(const char* name)
{
    return name != nullptr && std::strcmp(name, knownLayout) == 0;
}

std::optional<RecordPictures> picturesOf(const VYRFrameRecord* record)
{
    // The size first: nothing beyond it may be read.
    if (record == nullptr || valueAt<std::uint32_t>(record, recordSizeOffset) < smallestRecord)
        return std::nullopt;

    RecordPictures pictures;
    pictures.width = valueAt<std::int32_t>(record, widthOffset);
    pictures.height = valueAt<std::int32_t>(record, heightOffset);
    pictures.bytesPerRow = valueAt<std::uint32_t>(record, bytesPerRowOffset);
    pictures.frameCounter = valueAt<std::uint32_t>(record, frameCounterOffset);
    pictures.left = pictureAt(record, leftOffset);
    pictures.right = pictureAt(record, rightOffset);

    if (!isSide(pictures.width) || !isSide(pictures.height))
        return std::nullopt;
    if (pictures.bytesPerRow < static_cast<std::uint32_t>(pictures.width) || pictures.bytesPerRow > longestRow)
        return std::nullopt;
    if (valueAt<std::uint8_t>(record, bitsPerPixelOffset) != 8)
        return std::nullopt;
    if (pictures.left == nullptr || pictures.right == nullptr)
        return std::nullopt;
    return pictures;
}

std::uint32_t framesMissed(std::uint32_t previousCounter, std::uint32_t counter)
{
    const std::uint32_t step = counter - previousCounter; // also right where the counter wraps
    const bool forwards = step != 0 && step < 0x80000000U;
    return forwards ? step - 1 : 0;
}
