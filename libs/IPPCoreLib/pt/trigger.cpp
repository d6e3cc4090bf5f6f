// SPDX-License-Identifier: Apache-2.0
// An event that threads wait for.

#include "trigger.h"

#include "deadline.h"
#include "fatal.h"

#include <cerrno>

namespace pt {

namespace {

constexpr int no_limit = -1;

} // namespace

trigger::trigger(bool autoreset, bool signalled)
    : _state(signalled ? 1 : 0)
    , _autoreset(autoreset)
{
    if (pthread_mutex_init(&_mutex, nullptr) != 0 || pthread_cond_init(&_condition, nullptr) != 0)
        fatal(fatal_primitive_create, "Trigger failed");
}

trigger::~trigger()
{
    pthread_cond_destroy(&_condition);
    pthread_mutex_destroy(&_mutex);
}

bool trigger::wait(int timeout)
{
    pthread_mutex_lock(&_mutex);
    while (_state == 0) {
        if (timeout < 0) {
            pthread_cond_wait(&_condition, &_mutex);
        } else if (wait_once(&_condition, &_mutex, timeout) == ETIMEDOUT) {
            pthread_mutex_unlock(&_mutex);
            return false;
        }
    }
    if (_autoreset)
        _state = 0;
    pthread_mutex_unlock(&_mutex);
    return true;
}

void trigger::wait()
{
    wait(no_limit);
}

void trigger::post()
{
    // A waiter that is let through clears the state first and looks at what it came for afterwards. So whoever finds
    // the state still set here, after having changed that, may rely on the waiter's finding the change. Not relaxed:
    // neither side's look may overtake its own change.
    if (_state != 0)
        return;
    pthread_mutex_lock(&_mutex);
    const bool was_signalled = _state != 0;
    _state = 1;
    // Before waking: on one core the woken thread runs at once, and would only go to sleep again on the mutex.
    pthread_mutex_unlock(&_mutex);
    if (was_signalled) // whoever waits is woken by the post that signalled, and will find this one
        return;
    if (_autoreset)
        pthread_cond_signal(&_condition);
    else
        pthread_cond_broadcast(&_condition);
}

} // namespace pt
