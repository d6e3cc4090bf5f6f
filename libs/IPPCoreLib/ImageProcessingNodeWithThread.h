// SPDX-License-Identifier: Apache-2.0
// A processing node with a worker thread of its own.

#pragma once

#include "ImageProcessingNode.h"
#include "ImageProcessingThread.h"

/// A processing node whose worker thread drains the predecessor's output queue: takes an item, calls Process(),
/// releases the item. Derive from it and implement Process() and Close().
///
/// A node is started once: make a new one for the next start. Derived classes whose Process() uses their own members
/// call StopProcessing() in their destructor, since the worker must have ended before those members go.
///
/// An exception that leaves Process() ends the worker, silently; its item is not released, and those behind it stay in
/// the queue until somebody clears it.
///
/// Called by slot from both sides of a library boundary: the order of bases and of virtual operations is fixed.
class IPPCORELIB_EXPORT ImageProcessingNodeWithThread : public ImageProcessingThread, public ImageProcessingNode
{
public:
    /// A stopped node without predecessor.
    ImageProcessingNodeWithThread();

    /// Does nothing; for derived classes to override. Thread: worker thread.
    void ThreadInit() override;

    /// Processes everything that the predecessor has queued, and returns when nothing came for 5 ms or when the
    /// node was stopped. A node without input processes null once. Thread: worker thread.
    void ThreadStep() override;

    /// Does nothing; for derived classes to override. Thread: worker thread.
    void ThreadExit() override;

    /// Stops the worker if it still runs. Thread: the controlling thread.
    ~ImageProcessingNodeWithThread() override;

    /// Starts the worker, the first time; later it makes IsRunning() true and nothing more (ImageProcessingThread).
    /// Thread: the controlling thread.
    void StartProcessing() override;

    /// Stops the worker, and waits for the Process() that it is in, without limit. An idle worker ends within 5 ms, or
    /// within 10 where a second of the wall clock turns meanwhile; if that clock is set back meanwhile, by as much
    /// later, unless an item comes. Nothing when it is stopped.
    /// Thread: the controlling thread, never the worker thread: not from Process().
    void StopProcessing() override;
};
