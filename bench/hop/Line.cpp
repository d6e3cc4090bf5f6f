// SPDX-License-Identifier: Apache-2.0
// What every contender offers: a line of nodes that items travel through.

#include "Line.h"

#include <ctime>

#include <sched.h>

Sink::Sink(std::size_t latencies)
    : _latencies(latencies)
{
}

void Sink::Arrived(std::int64_t sent)
{
    if (sent != 0 && _measured < _latencies.size())
        _latencies[_measured++] = nowNanoseconds() - sent;
    // One writer: no read-modify-write needed.
    _count.store(_count.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

std::vector<std::int64_t> Sink::Latencies() const
{
    return {_latencies.begin(), _latencies.begin() + static_cast<std::ptrdiff_t>(_measured)};
}

void pinCallingThread(const Processors& processors)
{
    cpu_set_t set;
    CPU_ZERO(&set);
    for (const int processor : processors)
        CPU_SET(static_cast<std::size_t>(processor), &set);
    sched_setaffinity(0, sizeof(set), &set);
}

std::int64_t nowNanoseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}
