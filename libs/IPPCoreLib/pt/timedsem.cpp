// SPDX-License-Identifier: Apache-2.0
// A counting semaphore whose wait can time out.

#include "timedsem.h"

#include "deadline.h"
#include "fatal.h"

#include <cerrno>

namespace pt {

timedsem::timedsem(int initial_count)
    : _count(initial_count)
{
    if (pthread_mutex_init(&_mutex, nullptr) != 0 || pthread_cond_init(&_condition, nullptr) != 0)
        fatal(fatal_primitive_create, "Timed semaphore failed");
}

timedsem::~timedsem()
{
    pthread_cond_destroy(&_condition);
    pthread_mutex_destroy(&_mutex);
}

bool timedsem::wait(int timeout)
{
    pthread_mutex_lock(&_mutex);
    while (_count < 1) {
        if (timeout < 0) {
            pthread_cond_wait(&_condition, &_mutex);
        } else if (wait_once(&_condition, &_mutex, timeout) == ETIMEDOUT) {
            // Time is up, even if a count has come in this very moment: it stays for the next wait.
            pthread_mutex_unlock(&_mutex);
            return false;
        }
    }
    --_count;
    pthread_mutex_unlock(&_mutex);
    return true;
}

void timedsem::post()
{
    pthread_mutex_lock(&_mutex);
    ++_count;
    pthread_cond_signal(&_condition);
    pthread_mutex_unlock(&_mutex);
}

} // namespace pt
