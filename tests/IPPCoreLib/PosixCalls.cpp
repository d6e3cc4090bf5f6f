// SPDX-License-Identifier: Apache-2.0
// POSIX thread calls of the program under test, counted and made to fail.

#include "PosixCalls.h"

#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

#include <dlfcn.h>
#include <pthread.h>
#include <sys/time.h>

namespace PosixCalls {

Counter threadCreate;
Counter threadJoin;
Counter threadDetach;
Counter mutexInit;
Counter mutexLock;
Counter mutexUnlock;
Counter conditionInit;
Counter conditionSignal;
Counter timedWait;
std::atomic<long long> longestTimedWait{0};
std::atomic<std::int64_t> wallClock{0};
std::atomic<int> mutexesHeldAtSignal{0};
std::atomic<bool> lastThreadIsDetached{false};

namespace {

thread_local int mutexesHeld = 0;
thread_local const TimedWaitStandIn* timedWaitStandIn = nullptr;

std::atomic<bool> threadsAreHeldBack{false};
std::atomic<int> heldBackThreads{0};

struct HeldBackEntry
{
    void* (*entry)(void*);
    void* argument;
};

void* runWhenLetGo(void* object)
{
    const std::unique_ptr<HeldBackEntry> heldBack(static_cast<HeldBackEntry*>(object));
    while (threadsAreHeldBack)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    void* const result = heldBack->entry(heldBack->argument);
    --heldBackThreads;
    return result;
}

void noteDeadline(const timespec& deadline)
{
    timeval now;
    gettimeofday(&now, nullptr);
    const long long ahead = (deadline.tv_sec - now.tv_sec) * 1'000'000'000LL + deadline.tv_nsec - now.tv_usec * 1'000LL;
    if (ahead > longestTimedWait)
        longestTimedWait = ahead;
}

bool asksForADetachedThread(const pthread_attr_t* attributes)
{
    int state = PTHREAD_CREATE_JOINABLE;
    if (attributes != nullptr)
        pthread_attr_getdetachstate(attributes, &state);
    return state == PTHREAD_CREATE_DETACHED;
}

template<typename Function, typename... Arguments>
int countAndCall(Counter& counter, const char* name, Function, Arguments... arguments)
{
    ++counter.calls;
    if (counter.fails)
        return EAGAIN;
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

TimedWaitStandIn::TimedWaitStandIn(std::function<int(const timespec& deadline)> wait)
    : _wait(std::move(wait))
{
    timedWaitStandIn = this;
}

TimedWaitStandIn::~TimedWaitStandIn()
{
    timedWaitStandIn = nullptr;
}

int TimedWaitStandIn::wait(pthread_mutex_t* mutex, const timespec& deadline) const
{
    pthread_mutex_unlock(mutex);
    const int result = _wait(deadline);
    pthread_mutex_lock(mutex);
    return result;
}

HeldBackThreads::HeldBackThreads()
{
    threadsAreHeldBack = true;
}

HeldBackThreads::~HeldBackThreads()
{
    threadsAreHeldBack = false;
    EXPECT_TRUE(waitFor([] { return count() == 0; })) << "a thread has not returned";
}

int HeldBackThreads::count()
{
    return heldBackThreads;
}

int mutexesHeldHere()
{
    return mutexesHeld;
}

} // namespace PosixCalls

using namespace PosixCalls;

#pragma GCC visibility push(default) // seen by the libraries that this program loads

extern "C" {

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument)
{
    lastThreadIsDetached = asksForADetachedThread(attributes);
    if (threadsAreHeldBack) {
        ++heldBackThreads;
        argument = new HeldBackEntry{entry, argument};
        entry = &runWhenLetGo;
    }
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

int pthread_mutex_lock(pthread_mutex_t* mutex)
{
    ++mutexesHeld;
    return countAndCall(mutexLock, "pthread_mutex_lock", &pthread_mutex_lock, mutex);
}

int pthread_mutex_unlock(pthread_mutex_t* mutex)
{
    --mutexesHeld;
    return countAndCall(mutexUnlock, "pthread_mutex_unlock", &pthread_mutex_unlock, mutex);
}

int pthread_cond_signal(pthread_cond_t* condition)
{
    mutexesHeldAtSignal = mutexesHeld;
    return countAndCall(conditionSignal, "pthread_cond_signal", &pthread_cond_signal, condition);
}

int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* deadline)
{
    noteDeadline(*deadline);
    if (timedWaitStandIn != nullptr)
        return timedWaitStandIn->wait(mutex, *deadline);
    return countAndCall(timedWait, "pthread_cond_timedwait", &pthread_cond_timedwait, condition, mutex, deadline);
}

int gettimeofday(timeval* now, void* zone) noexcept
{
    const std::int64_t standing = wallClock;
    if (standing == 0)
        return reinterpret_cast<int (*)(timeval*, void*)>(dlsym(RTLD_NEXT, "gettimeofday"))(now, zone);
    now->tv_sec = static_cast<time_t>(standing / 1'000'000);
    now->tv_usec = static_cast<suseconds_t>(standing % 1'000'000);
    return 0;
}

} // extern "C"

#pragma GCC visibility pop
