// SPDX-License-Identifier: Apache-2.0
// Measures the ticks of an event loop.

#include "TickMeter.h"

#include <tests/support/AllocationCount.h>

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>
#include <ctime>

namespace {

long ticksUntilBegin = 0;
long ticksUntilEnd = 0;
long measuredTicks = 0;
std::int64_t beginTime = 0;
std::int64_t endTime = 0;
std::size_t beginAllocations = 0;
std::size_t endAllocations = 0;

std::int64_t threadTime()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

void countTick()
{
    if (ticksUntilBegin > 0) {
        if (--ticksUntilBegin == 0) {
            beginAllocations = allocationCount();
            beginTime = threadTime();
        }
    } else if (--ticksUntilEnd == 0) {
        endTime = threadTime();
        endAllocations = allocationCount();
        QCoreApplication::quit();
    }
}

void startMetering(long warmUp, long ticks)
{
    ticksUntilBegin = warmUp;
    ticksUntilEnd = ticks;
    measuredTicks = ticks;
}

double nanosecondsPerTick()
{
    return static_cast<double>(endTime - beginTime) / static_cast<double>(measuredTicks);
}

double allocationsPerTick()
{
    return static_cast<double>(endAllocations - beginAllocations) / static_cast<double>(measuredTicks);
}
