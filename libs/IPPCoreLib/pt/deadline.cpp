// SPDX-License-Identifier: Apache-2.0
// Timed waiting on a condition, shared by the semaphore and the trigger.

#include "deadline.h"

#include <cerrno>

namespace pt {

int wait_once(pthread_cond_t* condition, pthread_mutex_t* mutex, int timeout)
{
    timeval now;
    gettimeofday(&now, nullptr);
    const timespec deadline = deadline_after(now, timeout);
    const int result = pthread_cond_timedwait(condition, mutex, &deadline);
    if (result == EINVAL) {
        // A rejected deadline returns at once, with the mutex still held, and so will every other one until the second
        // has turned. Rest until then, open to posts: trying over and over would burn a core and keep the camera's
        // thread from the mutex.
        const timespec turn_of_the_second = {now.tv_sec + 1, 0};
        pthread_cond_timedwait(condition, mutex, &turn_of_the_second);
    }
    return result;
}

} // namespace pt
