// SPDX-License-Identifier: Apache-2.0
// A mutex for sections of some ten nanoseconds that two cores enter at the same time.

#pragma once

#include <pthread.h>

/// A mutex that looks again for a moment before it goes to sleep, for sections so short that going to sleep and being
/// woken costs a hundred times what they do. Meets the requirements of `BasicLockable`, and is used through
/// std::lock_guard.
///
/// How long it looks is the C library's decision, which learns from earlier waits: about a hundred rounds at most, far
/// below the cost of a system call. Not recursive, not fair. The kind is glibc's own, hence `_NP`.
/// Thread: any thread; must not be destroyed while somebody holds it or waits for it.
class AdaptiveMutex
{
public:
    /// A mutex that nobody holds.
    AdaptiveMutex() = default;
    ~AdaptiveMutex() { pthread_mutex_destroy(&_mutex); }

    AdaptiveMutex(const AdaptiveMutex&) = delete;
    AdaptiveMutex& operator=(const AdaptiveMutex&) = delete;

    /// Waits until nobody else holds the mutex, and holds it. Locking it twice on one thread waits forever.
    void lock() { pthread_mutex_lock(&_mutex); }
    /// Lets go of it. Only for who holds it.
    void unlock() { pthread_mutex_unlock(&_mutex); }

private:
    pthread_mutex_t _mutex = PTHREAD_ADAPTIVE_MUTEX_INITIALIZER_NP;
};
