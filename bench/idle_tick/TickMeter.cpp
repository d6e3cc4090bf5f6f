// SPDX-License-Identifier: Apache-2.0
// Measures the ticks of an event loop.

#include "TickMeter.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>

#include <time.h>

// The C library's own names for what the functions below stand in front of, operator new included.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)
}

namespace {

thread_local std::uint64_t allocations = 0;

long ticksUntilBegin = 0;
long ticksUntilEnd = 0;
long measuredTicks = 0;
std::int64_t beginTime = 0;
std::int64_t endTime = 0;
std::uint64_t beginAllocations = 0;
std::uint64_t endAllocations = 0;

std::int64_t threadTime()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size)
{
    ++allocations;
    return __libc_realloc(memory, size);
}

void countTick()
{
    if (ticksUntilBegin > 0) {
        if (--ticksUntilBegin == 0) {
            beginAllocations = allocations;
            beginTime = threadTime();
        }
    } else if (--ticksUntilEnd == 0) {
        endTime = threadTime();
        endAllocations = allocations;
        QCoreApplication::quit();
    }
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
