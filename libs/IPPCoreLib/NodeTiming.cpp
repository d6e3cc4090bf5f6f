// SPDX-License-Identifier: Apache-2.0
// How long a node takes per item.

#include "NodeTiming.h"

#include <sys/time.h>

namespace {

/// The wall clock in seconds, as whole milliseconds since the epoch in a signed 32-bit number. It wraps every 49.7
/// days; an item that straddles the wrap spoils one average.
double WallClockSeconds()
{
    timeval now;
    gettimeofday(&now, nullptr);
    const auto milliseconds =
        static_cast<std::uint32_t>(now.tv_sec) * 1000U + static_cast<std::uint32_t>(now.tv_usec / 1000);
    return static_cast<std::int32_t>(milliseconds) * 0.001;
}

} // namespace

void NodeTiming::BeginTiming()
{
    _start = WallClockSeconds();
}

void NodeTiming::EndTiming()
{
    const std::lock_guard<std::mutex> guard(_mutex);
    _accumulated += WallClockSeconds() - _start;
    ++_samples;
}

double NodeTiming::AverageMilliseconds(std::int32_t minimumSamples)
{
    const std::lock_guard<std::mutex> guard(_mutex);
    if (_samples >= minimumSamples && _samples > 0) { // a minimum of 0 is no reason to divide by it
        _lastAverage = _accumulated / _samples;
        _accumulated = 0.0;
        _samples = 0;
    }
    return _lastAverage * 1000.0;
}
