// SPDX-License-Identifier: Apache-2.0
// The clock that frames are timed by.

#pragma once

#include <atomic>
#include <cstdint>

namespace simulator {

/// Nanoseconds of the system's monotonic clock.
std::int64_t monotonicNow();

/// Sleeps until the monotonic clock shows `time`, or until `stop` is set: noticed within 20 ms.
void sleepUntil(std::int64_t time, const std::atomic<bool>& stop);

} // namespace simulator
