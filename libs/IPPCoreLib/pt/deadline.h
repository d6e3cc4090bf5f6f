// SPDX-License-Identifier: Apache-2.0
// Timed waiting on a condition, shared by the semaphore and the trigger. Private to the library.

#pragma once

#include <ctime>

#include <pthread.h>
#include <sys/time.h>

namespace pt {

/// The wall-clock time `timeout` milliseconds after `now`.
///
/// Deliberate: the nanoseconds are not carried into the seconds. A sum that reaches a full second is a deadline
/// that the timed wait rejects at once, and the waiter computes a new one: a wait that straddles the turn of a
/// second therefore ends only after that turn, never early.
inline timespec deadline_after(const timeval& now, int timeout)
{
    timespec deadline;
    deadline.tv_sec = now.tv_sec + timeout / 1000;
    deadline.tv_nsec = (timeout % 1000) * 1'000'000L + now.tv_usec * 1000L;
    return deadline;
}

/// One timed wait on `condition` with `mutex` held, by a deadline `timeout` milliseconds from now. Returns the
/// result of the wait: 0 when woken (also for no reason), ETIMEDOUT, or EINVAL for a rejected deadline. A wall clock
/// that is set back meanwhile lengthens the wait by as much.
int wait_once(pthread_cond_t* condition, pthread_mutex_t* mutex, int timeout);

} // namespace pt
