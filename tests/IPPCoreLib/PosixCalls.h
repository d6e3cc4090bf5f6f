// SPDX-License-Identifier: Apache-2.0
// POSIX thread calls of the program under test, counted and made to fail.

#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>
#include <functional>

#include <pthread.h>

/// The test program defines these POSIX functions itself, in front of the C library's, so that the library under test
/// calls them here. They count, then fail if told to, else do the real thing.
namespace PosixCalls {

struct Counter
{
    std::atomic<int> calls{0};
    std::atomic<bool> fails{false};
};

extern Counter threadCreate;
extern Counter threadJoin;
extern Counter threadDetach;
extern Counter mutexInit;
extern Counter mutexLock;
extern Counter mutexUnlock;
extern Counter conditionInit;
extern Counter conditionSignal;
extern Counter timedWait;

/// How many mutexes the thread held that last signalled a condition.
extern std::atomic<int> mutexesHeldAtSignal;

/// How many mutexes the calling thread holds.
int mutexesHeldHere();

/// Whether the thread that was created last is a detached one.
extern std::atomic<bool> lastThreadIsDetached;

/// The longest time ahead that a deadline of a timed wait was since it was last set to 0, in nanoseconds.
extern std::atomic<long long> longestTimedWait;

/// What gettimeofday() tells, in microseconds since the epoch; 0 for the real time.
extern std::atomic<std::int64_t> wallClock;

/// Sets the wall clock, which then stands, and lets it run again at the end of its life.
class StandingClock
{
public:
    explicit StandingClock(std::int64_t microseconds) { wallClock = microseconds; }
    ~StandingClock() { wallClock = 0; }

    StandingClock(const StandingClock&) = delete;
    StandingClock& operator=(const StandingClock&) = delete;
};

/// Takes the place of the calling thread's timed waits during its life. `wait` is called with the deadline, while the
/// mutex is unlocked, and tells the result. One at a time on a thread.
class TimedWaitStandIn
{
public:
    explicit TimedWaitStandIn(std::function<int(const timespec& deadline)> wait);
    ~TimedWaitStandIn();

    TimedWaitStandIn(const TimedWaitStandIn&) = delete;
    TimedWaitStandIn& operator=(const TimedWaitStandIn&) = delete;

    int wait(pthread_mutex_t* mutex, const timespec& deadline) const;

private:
    const std::function<int(const timespec& deadline)> _wait;
};

/// Keeps threads that are created during its life from running their entry. At the end of its life they run it, and it
/// waits until they have returned. One at a time.
class HeldBackThreads
{
public:
    HeldBackThreads();
    ~HeldBackThreads();

    HeldBackThreads(const HeldBackThreads&) = delete;
    HeldBackThreads& operator=(const HeldBackThreads&) = delete;

    /// How many have been created and have not returned.
    static int count();
};

} // namespace PosixCalls
