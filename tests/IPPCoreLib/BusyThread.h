// SPDX-License-Identifier: Apache-2.0
// A thread that does one thing over and over, for the thread sanitizer to watch.

#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <utility>

/// Calls `round` on a thread of its own, over and over, until the end of its life. What it counts orders nothing
/// between the threads, so that the thread sanitizer finds a lock that is missing in what they both use.
class BusyThread
{
public:
    explicit BusyThread(std::function<void()> round)
        : _round(std::move(round))
        , _thread([this] { run(); })
    {
    }

    ~BusyThread()
    {
        _ended = true;
        _thread.join();
    }

    BusyThread(const BusyThread&) = delete;
    BusyThread& operator=(const BusyThread&) = delete;

    /// Calls `operation` on the calling thread, over and over, until many more rounds were made meanwhile.
    template<typename Operation>
    void meanwhile(Operation operation) const
    {
        const int enough = rounds() + 1'000;
        do
            operation();
        while (rounds() < enough); // cppcheck-suppress knownConditionTrueFalse ; the thread counts meanwhile
    }

private:
    void run()
    {
        while (!_ended) {
            _round();
            _rounds.fetch_add(1, std::memory_order_relaxed);
        }
    }

    int rounds() const { return _rounds.load(std::memory_order_relaxed); }

    const std::function<void()> _round;
    std::atomic<bool> _ended{false};
    std::atomic<int> _rounds{0};
    std::thread _thread; // last, since it uses all of these
};
