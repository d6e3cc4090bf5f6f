// SPDX-License-Identifier: Apache-2.0
// An event that threads wait for.

#pragma once

#include <libs/IPPCoreLib/IPPCoreLibExport.h>

#include <atomic>

#include <pthread.h>

namespace pt {

/// An event: signalled or not. An auto-reset trigger lets one wait through per post and is then clear again; a
/// manual one, once posted, stays signalled for good (there is no reset). Failing to create it is fatal
/// (0xC0029, "Trigger failed").
/// Thread: any thread, at the same time; must not be destroyed while somebody waits or posts.
class IPPCORELIB_EXPORT trigger
{
public:
    /// An auto-reset or a manual trigger, signalled or not.
    trigger(bool autoreset, bool signalled);
    ~trigger();

    trigger(const trigger&) = delete;
    trigger& operator=(const trigger&) = delete;

    /// Waits until the trigger is signalled. `timeout` is in milliseconds; negative waits without limit.
    /// Returns true when it was signalled, false when the time ran out.
    bool wait(int timeout);

    /// Waits until the trigger is signalled, without limit.
    void wait();

    /// Signals: wakes one waiter of an auto-reset trigger, all waiters of a manual one. Posts do not add up. Makes no
    /// system call when nobody waits, and nothing but one look when the trigger is signalled already.
    ///
    /// A waiter that is let through finds what was changed before a post, provided that it is guarded by a mutex on
    /// both sides, as the items of a queue are, or is a sequentially consistent atomic. The post alone does not hand it
    /// over: one that finds the trigger signalled meets nobody.
    void post();

private:
    pthread_mutex_t _mutex{}; ///< held while _state is changed, and from the look at it until the waiter waits
    pthread_cond_t _condition{};
    std::atomic<int> _state; ///< non-zero while signalled
    bool _autoreset;
};

} // namespace pt
