// SPDX-License-Identifier: Apache-2.0
// How many camera callbacks are inside a section of code.

#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

/// Counts the callbacks inside a section, so that whoever has closed the section can wait until the last one is out.
///
/// The section begins with a Stay and then looks at the flag that closes it; the owner writes the flag and then waits.
/// Both use sequentially consistent order, so that either the callback sees the section closed, or the owner sees the
/// callback inside. A callback never waits, and wakes nobody.
/// Thread: any thread.
class CallbackCount
{
public:
    /// One callback's stay in the section.
    class Stay
    {
    public:
        explicit Stay(CallbackCount& count)
            : _inside(count._inside)
        {
            _inside.fetch_add(1);
        }

        ~Stay() { _inside.fetch_sub(1); }

        Stay(const Stay&) = delete;
        Stay& operator=(const Stay&) = delete;

    private:
        std::atomic<std::int32_t>& _inside;
    };

    /// Returns when nobody is inside. To be called when the section is closed. Polls, since hardly ever anybody is
    /// inside, and since waking the waiter would be the callback's expense with every frame.
    void WaitUntilNone() const
    {
        while (_inside.load() != 0)
            std::this_thread::sleep_for(std::chrono::microseconds(100));
    }

private:
    std::atomic<std::int32_t> _inside{0};
};
