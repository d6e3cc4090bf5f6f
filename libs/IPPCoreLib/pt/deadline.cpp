// SPDX-License-Identifier: Apache-2.0
// Timed waiting on a condition, shared by the semaphore and the trigger.

#include "deadline.h"

#include <cerrno>

#include <sched.h>

namespace pt {

int wait_once(pthread_cond_t* condition, pthread_mutex_t* mutex, int timeout)
{
    timeval now;
    gettimeofday(&now, nullptr);
    const timespec deadline = deadline_after(now, timeout);
    const int result = pthread_cond_timedwait(condition, mutex, &deadline);
    if (result == EINVAL) {
        // A rejected deadline returns without having let go of the mutex. Let whoever posts through before the
        // next try, as a wait would have: the camera's thread must not stand here until the second has turned.
        pthread_mutex_unlock(mutex);
        sched_yield();
        pthread_mutex_lock(mutex);
    }
    return result;
}

} // namespace pt
