// SPDX-License-Identifier: Apache-2.0
// A thread that runs the body of a derived class.

#include "thread.h"

#include "exception.h"
#include "exchange_flag.h"
#include "fatal.h"

namespace pt {

thread::thread(bool autofree)
    : _autofree(autofree ? 1 : 0)
{
}

thread::~thread()
{
    if (exchange_flag(&_freed, 1) == 0 && !is_autofree() && is_started())
        pthread_detach(_handle);
}

void thread::start()
{
    if (exchange_flag(&_started, 1) != 0)
        return;

    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, is_autofree() ? PTHREAD_CREATE_DETACHED : PTHREAD_CREATE_JOINABLE);
    // An autofree thread may have deleted this object before pthread_create() returns: it stores its own handle.
    pthread_t unused;
    if (pthread_create(is_autofree() ? &unused : &_handle, &attributes, &thread::entry, this) != 0)
        fatal(fatal_thread_create, "pthread_create() failed");
    pthread_attr_destroy(&attributes);
}

void thread::waitfor()
{
    if (exchange_flag(&_freed, 1) != 0)
        return;
    if (pthread_equal(pthread_self(), _handle))
        fatal(fatal_wait_for_self, "Can not waitfor() on myself");
    if (is_autofree())
        fatal(fatal_wait_for_autofree, "Can not waitfor() on an autofree thread");
    pthread_join(_handle, nullptr);
    _handle = 0;
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
    thread* const self = static_cast<thread*>(object);
    if (self->is_autofree())
        self->_handle = pthread_self();
    try {
        self->run();
    } catch (exception*) {
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
    } catch (exception* error) {
        delete error;
    }
    exchange_flag(&_finished, 1);
    if (is_autofree())
        delete this;
}

} // namespace pt
