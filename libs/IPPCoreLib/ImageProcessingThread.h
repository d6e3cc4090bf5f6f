// SPDX-License-Identifier: Apache-2.0
// The worker of a processing node.

#pragma once

#include "IPPCoreLibExport.h"

#include <atomic>
#include <memory>
#include <mutex>

class SafeThread;

/// A worker thread that calls three hooks: ThreadInit() once, ThreadStep() over and over while running, ThreadExit()
/// once. An exception that leaves a hook ends the worker, silently.
///
/// Meant to be started once: its thread starts at most once in its life. After a stop, StartProcessing() makes
/// IsRunning() true, but no thread runs (unless the stop came before the first thread was up: that one then runs).
///
/// The hooks are called by slot: their order is fixed, and the destructor is not virtual.
/// Ownership: owns its SafeThread.
/// Thread: StartProcessing(), StopProcessing() and destruction on the one controlling thread, the hooks on the worker
/// thread.
class IPPCORELIB_EXPORT ImageProcessingThread
{
public:
    ImageProcessingThread(const ImageProcessingThread&) = delete;
    ImageProcessingThread& operator=(const ImageProcessingThread&) = delete;

    /// Called once on the worker thread before the first step, with the hook lock held.
    virtual void ThreadInit() = 0;

    /// Called repeatedly on the worker thread while running, without the hook lock. Should return within a few
    /// milliseconds when there is nothing to do, so that a stop is noticed.
    virtual void ThreadStep() = 0;

    /// Called once on the worker thread after the last step, with the hook lock held.
    virtual void ThreadExit() = 0;

    /// Starts the worker; nothing when it is running already.
    void StartProcessing();

    /// Stops the worker: clears the running flag and waits until the thread has ended. Nothing when it is not
    /// running. A thread that has yet to come up is not waited for; it will find itself stopped and call no hook.
    /// Calling it from a hook would wait for oneself, which is fatal (see pt::thread::waitfor()).
    void StopProcessing();

    /// Whether the worker was started and not stopped since. Thread: any thread.
    bool IsRunning() const { return _running.load(std::memory_order_relaxed); }

protected:
    ImageProcessingThread();
    ~ImageProcessingThread();

private:
    void Body();
    void RunHooks();

    std::atomic<bool> _running{false};
    std::mutex _hookLock; ///< held while ThreadInit() or ThreadExit() runs; guards nothing else
    std::unique_ptr<SafeThread> _thread;
};
