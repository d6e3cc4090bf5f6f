// SPDX-License-Identifier: Apache-2.0
// A thread that runs a stored callable.

#include "SafeThread.h"

SafeThread::SafeThread(bool autofree)
    : pt::thread(autofree)
{
}

SafeThread::~SafeThread()
{
    const bool wasExecuting = executing.exchange(false);
    if (wasExecuting || (is_started() && !is_autofree()))
        waitfor();
}

void SafeThread::run()
{
    executing = true;
    if (callable)
        callable();
    executing = false;
}
