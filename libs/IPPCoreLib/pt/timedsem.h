// SPDX-License-Identifier: Apache-2.0
// A counting semaphore whose wait can time out.

#pragma once

#include "unknown.h"

#include <pthread.h>

namespace pt {

/// A counting semaphore with a time-out. Failing to create it is fatal (0xC0029, "Timed semaphore failed").
/// Thread: any thread, at the same time; must not be destroyed while somebody waits.
class IPPCORELIB_EXPORT timedsem : public unknown
{
public:
    /// A semaphore with that count, 0 or more.
    explicit timedsem(int initial_count);
    ~timedsem() override;

    /// Waits until the count is above 0 and takes one. `timeout` is in milliseconds; negative waits without
    /// limit, 0 tries once. Returns true when a count was taken, false when the time ran out. Wake-ups that
    /// find no count start the time-out anew, so the limit is the least, not the most, that is waited.
    bool wait(int timeout);

    /// Adds one to the count and wakes one waiter. Never waits for anybody but for the short lock.
    void post();

private:
    int _count;
    pthread_mutex_t _mutex{}; ///< guards _count
    pthread_cond_t _condition{};
};

} // namespace pt
