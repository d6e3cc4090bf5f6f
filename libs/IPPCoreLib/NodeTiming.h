// SPDX-License-Identifier: Apache-2.0
// How long a node takes per item.

#pragma once

#include "IPPCoreLibExport.h"

#include <cstdint>
#include <mutex>

/// Processing-time statistics of one node. Measured by the system's clock: a sample during which that is set is wrong.
/// Thread: BeginTiming() and EndTiming() on the node's worker thread, AverageMilliseconds() on any thread.
class IPPCORELIB_EXPORT NodeTiming
{
public:
    /// Marks the beginning of an item.
    void BeginTiming();

    /// Adds the time since BeginTiming() as one sample.
    void EndTiming();

    /// The average time per item in milliseconds, resolution 1 ms a sample. With at least `minimumSamples`
    /// samples gathered, a new average is formed from them and gathering begins anew; with fewer, the previous
    /// average is returned (0 at first) and gathering goes on. To be asked with at least 1.
    double AverageMilliseconds(std::int32_t minimumSamples);

private:
    double _start = 0.0;       ///< seconds; touched by the worker thread only
    double _accumulated = 0.0; ///< seconds
    std::int32_t _samples = 0;
    double _lastAverage = 0.0; ///< seconds
    std::mutex _mutex;         ///< guards _accumulated, _samples and _lastAverage
};
