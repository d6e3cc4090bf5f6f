// SPDX-License-Identifier: Apache-2.0
// A thread that runs the body of a derived class.

#pragma once

#include "timedsem.h"
#include "unknown.h"

#include <atomic>

#include <pthread.h>

namespace pt {

/// A thread whose body is run(). Two modes, fixed at construction:
///  - joinable: the owner calls start(), later waitfor(), then deletes the object. Deleting a started thread
///    that nobody waited for detaches it; whoever does that must make sure that the object outlives run().
///  - autofree: created with `new`, deletes itself when run() and finish() are through. Nobody waits for it.
///
/// start(), waitfor() and signal() each act once in the life of the object; later calls return at once.
/// Thread: start(), waitfor() and the destructor of a joinable thread belong to its owner.
class IPPCORELIB_EXPORT thread : public unknown
{
public:
    /// A thread that has yet to be started, of one of the two modes.
    explicit thread(bool autofree);

    /// Detaches a joinable thread that was started and not waited for.
    ~thread() override;

    /// Starts the thread. Failing to create it is fatal (0xC0028, "pthread_create() failed").
    void start();

    /// Waits until the thread has ended. Waiting for oneself (0xC002F) and for an autofree thread (0xC0030)
    /// is fatal. Must follow start(); the behaviour is undefined otherwise.
    void waitfor();

    /// Posts the thread's signal semaphore, once. Thread: any thread.
    void signal();

protected:
    /// The thread's body. What it throws ends the process.
    virtual void run() = 0;

    /// Called on the thread when run() is through. A pt::exception that leaves it is deleted and forgotten.
    virtual void finish();

    /// Whether start() has been called. Thread: the owner's.
    bool is_started() const { return _started != 0; }

    /// Whether the thread deletes itself. Thread: any thread.
    bool is_autofree() const { return _autofree != 0; }

private:
    static void* entry(void* object);
    void epilogue();

    /// 0 before the start and after the wait. Relaxed: it names a thread, it does not publish anything.
    std::atomic<pthread_t> _handle{0};
    // Flag words, changed through exchange_flag() only.
    int _autofree;
    int _started = 0;
    int _signaled = 0;
    int _finished = 0;
    int _freed = 0; ///< somebody has waited, or the thread was detached
    timedsem _signal{0};
};

static_assert(sizeof(std::atomic<pthread_t>) == sizeof(pthread_t), "same place as a plain identifier");

} // namespace pt
