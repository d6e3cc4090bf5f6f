// SPDX-License-Identifier: Apache-2.0
// The clock that frames are timed by.

#include "Clock.h"

#include <algorithm>

#include <time.h> // NOLINT(modernize-deprecated-headers): the clocks are those of POSIX

namespace simulator {

namespace {

constexpr std::int64_t second = 1000000000;
constexpr std::int64_t longestSleep = 20000000;

} // namespace

std::int64_t monotonicNow()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * second + now.tv_nsec;
}

void sleepUntil(std::int64_t time, const std::atomic<bool>& stop)
{
    for (std::int64_t now = monotonicNow(); now < time && !stop; now = monotonicNow()) {
        const std::int64_t wake = std::min(time, now + longestSleep);
        timespec until = {};
        until.tv_sec = static_cast<time_t>(wake / second);
        until.tv_nsec = static_cast<long>(wake % second);
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr); // woken by a signal, it goes round again
    }
}

} // namespace simulator
