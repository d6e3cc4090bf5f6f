// SPDX-License-Identifier: Apache-2.0
// A thread that runs a stored callable.

#pragma once

#include <libs/IPPCoreLib/pt/thread.h>

#include <atomic>
#include <functional>

/// A thread that runs a callable which its owner stores in it before start(). The owner reads and writes the
/// three fields directly.
///
/// Destroying it waits for a joinable thread that was started, so that no thread ever runs on a dead object:
/// one that is executing (the owner has told the callable to end before), and one that has yet to come up or is
/// just ending.
/// Thread: fields and destructor belong to the owner; `executing` is also written by the thread itself.
class IPPCORELIB_EXPORT SafeThread : public pt::thread
{
public:
    /// A thread with nothing to run yet; see pt::thread for `autofree`.
    explicit SafeThread(bool autofree);

    /// Clears `executing` and waits for the thread, if there is one to wait for.
    ~SafeThread() override;

    /// Set by the thread when run() begins, cleared when the callable has returned or by the owner just before
    /// it joins.
    std::atomic<bool> executing{false};

    /// Zero-terminated name, for people; written by the owner.
    char name[32] = {};

    /// What the thread runs; empty runs nothing. Must not be replaced while the thread executes.
    std::function<void()> callable;

protected:
    /// Runs the callable. What the callable throws ends the process.
    void run() override;
};

static_assert(sizeof(std::atomic<bool>) == 1, "executing is a byte flag");
