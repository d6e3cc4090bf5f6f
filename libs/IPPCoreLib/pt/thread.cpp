// SPDX-License-Identifier: Apache-2.0
// A thread that runs the body of a derived class.

#include "thread.h"

#include "exception.h"
#include "exchange_flag.h"
#include "fatal.h"

namespace pt {

namespace {

constexpr auto relaxed = std::memory_order_relaxed;

} // namespace

thread::thread(bool autofree)
    : _autofree(autofree ? 1 : 0)
{
}

thread::~thread()
{
    if (exchange_flag(&_freed, 1) == 0 && !is_autofree() && is_started())
        pthread_detach(_handle.load(relaxed));
}

void thread::start()
{
    if (exchange_flag(&_started, 1) != 0)
        return;

    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, is_autofree() ? PTHREAD_CREATE_DETACHED : PTHREAD_CREATE_JOINABLE);
    // An autofree thread may have deleted this object before pthread_create() returns.
    const bool joinable = !is_autofree();
    pthread_t created = 0;
    if (pthread_create(&created, &attributes, &thread::entry, this) != 0)
        fatal(fatal_thread_create, "pthread_create() failed");
    if (joinable)
        _handle.store(created, relaxed);
    pthread_attr_destroy(&attributes);
}

void thread::waitfor()
{
    if (exchange_flag(&_freed, 1) != 0)
        return;
    const pthread_t handle = _handle.load(relaxed);
    if (pthread_equal(pthread_self(), handle) != 0)
        fatal(fatal_wait_for_self, "Can not waitfor() on myself");
    if (is_autofree())
        fatal(fatal_wait_for_autofree, "Can not waitfor() on an autofree thread");
    pthread_join(handle, nullptr);
    _handle.store(0, relaxed);
}

void thread::signal()
{
    if (exchange_flag(&_signaled, 1) == 0)
        _signal.post();
}

void thread::finish()
{
}

void* thread::entry(void* object)
{
    auto* const self = static_cast<thread*>(object);
    // Both do it, since a thread may ask who it is before start() has come to storing the handle.
    self->_handle.store(pthread_self(), relaxed);
    try {
        self->run();
    } catch (exception*) { // NOLINT(misc-throw-by-value-catch-by-reference): thrown by pointer
        // Not ours to swallow: nobody is left on this thread to catch it, and the process ends with it.
        self->epilogue();
        throw;
    }
    self->epilogue();
    return nullptr;
}

void thread::epilogue()
{
    try {
        finish();
    } catch (exception* error) { // NOLINT(misc-throw-by-value-catch-by-reference): thrown by pointer
        delete error;
    }
    exchange_flag(&_finished, 1);
    if (is_autofree())
        delete this;
}

} // namespace pt
