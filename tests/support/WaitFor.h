// SPDX-License-Identifier: Apache-2.0
// Waiting on a condition with a limit.

#pragma once

#include <chrono>
#include <thread>

/// Polls `condition` every half millisecond until it holds or `limit` has passed; returns whether it holds. The limit
/// only bounds a failing test: it is generous, so that a slow day does not fail one.
template<typename Condition>
bool waitFor(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20))
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return condition();
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    return true;
}
