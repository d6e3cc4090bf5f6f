// SPDX-License-Identifier: Apache-2.0
// When the frames of a stream are due.

#pragma once

#include <cmath>
#include <cstdint>

namespace simulator {

/// The points in time at which frames are due: absolute, so that being late once delays nothing that follows.
/// A value; times are nanoseconds of one clock.
class TickSchedule
{
public:
    /// Tick 0 is due at `start`.
    TickSchedule(std::int64_t start, double fps)
        : _start(start)
        , _fps(fps)
    {
    }

    /// When a tick is due. Computed from the start, not from the tick before: errors do not add up.
    std::int64_t due(std::int64_t tick) const { return _start + std::llround(static_cast<double>(tick) * 1e9 / _fps); }

    /// The tick to make after `tick`, at the time `now`: the following one, or, if its frame time is over as well, the
    /// first that is still to come. Ticks in between are missed, never made up for.
    std::int64_t next(std::int64_t tick, std::int64_t now) const
    {
        if (now < due(tick + 2))
            return tick + 1;
        auto first = static_cast<std::int64_t>(std::floor(static_cast<double>(now - _start) * _fps / 1e9));
        while (due(first) < now)
            ++first;
        return first;
    }

private:
    std::int64_t _start;
    double _fps;
};

} // namespace simulator
