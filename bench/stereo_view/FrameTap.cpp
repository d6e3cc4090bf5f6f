// SPDX-License-Identifier: Apache-2.0
// Stands between camera library and host: notes when each frame arrives, and marks its left picture with its number.

#include "FrameTap.h"

#include <VYR.h>
#include <VYRFrame1.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <ctime>

#include <dlfcn.h>

namespace {

using Callback = void (*)(const VYRFrameRecord* record, void* userData);

Callback hostCallback = nullptr;
std::array<std::atomic<std::int64_t>, 1U << FrameTap::markBits> arrivalTimes = {};
std::atomic<std::uint32_t> arrivalCount = 0;
std::atomic<std::int64_t> threadTime = 0;

std::int64_t timeOf(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

void mark(const VYRFrame1& frame)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the library's memory, as whose this is written
    auto* const pixels = const_cast<std::uint8_t*>(frame.left.pixels);
    for (int bit = 0; bit < FrameTap::markBits; ++bit) {
        const QRect place = FrameTap::markOf(bit);
        const int grey = (frame.frameCounter >> static_cast<unsigned>(bit) & 1U) != 0 ? 255 : 0;
        for (int y = place.top(); y <= place.bottom(); ++y)
            std::memset(pixels + static_cast<std::size_t>(y) * frame.bytesPerRow + place.left(), grey,
                        static_cast<std::size_t>(place.width()));
    }
}

void passOn(const VYRFrameRecord* record, void* userData)
{
    const auto& frame = *reinterpret_cast<const VYRFrame1*>(record);
    mark(frame);
    threadTime = timeOf(CLOCK_THREAD_CPUTIME_ID);
    // cppcheck-suppress moduloofone ; it does not know markBits
    arrivalTimes[frame.frameCounter % arrivalTimes.size()] = FrameTap::now();
    ++arrivalCount;
    hostCallback(record, userData);
}

} // namespace

// Found before the library's operation of this name, since it stands in the program.
extern "C" __attribute__((visibility("default"))) bool StartVYR(void* handle, Callback callback, void* userData,
                                                                bool flag)
{
    static const auto start = reinterpret_cast<decltype(&StartVYR)>(dlsym(RTLD_NEXT, "StartVYR"));
    hostCallback = callback;
    return start(handle, &passOn, userData, flag);
}

std::int64_t FrameTap::now()
{
    return timeOf(CLOCK_MONOTONIC);
}

std::int64_t FrameTap::arrivalOf(std::uint32_t number)
{
    return arrivalTimes[number % arrivalTimes.size()];
}

std::uint32_t FrameTap::arrivals()
{
    return arrivalCount;
}

std::int64_t FrameTap::cameraThreadTime()
{
    return threadTime;
}
