// SPDX-License-Identifier: Apache-2.0
// POSIX thread calls of the program under test, counted and made to fail.

#include "PosixCalls.h"

#include <cerrno>

#include <dlfcn.h>
#include <pthread.h>

namespace PosixCalls {

Counter threadCreate;
Counter threadJoin;
Counter threadDetach;
Counter mutexInit;
Counter conditionInit;

namespace {

template<typename Function, typename... Arguments>
int countAndCall(Counter& counter, const char* name, Function, Arguments... arguments)
{
    ++counter.calls;
    if (counter.fails)
        return EAGAIN;
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

} // namespace PosixCalls

using namespace PosixCalls;

#pragma GCC visibility push(default) // seen by the libraries that this program loads

extern "C" {

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument)
{
    return countAndCall(threadCreate, "pthread_create", &pthread_create, thread, attributes, entry, argument);
}

int pthread_join(pthread_t thread, void** result)
{
    return countAndCall(threadJoin, "pthread_join", &pthread_join, thread, result);
}

int pthread_detach(pthread_t thread)
{
    return countAndCall(threadDetach, "pthread_detach", &pthread_detach, thread);
}

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes)
{
    return countAndCall(mutexInit, "pthread_mutex_init", &pthread_mutex_init, mutex, attributes);
}

int pthread_cond_init(pthread_cond_t* condition, const pthread_condattr_t* attributes)
{
    return countAndCall(conditionInit, "pthread_cond_init", &pthread_cond_init, condition, attributes);
}

} // extern "C"

#pragma GCC visibility pop
