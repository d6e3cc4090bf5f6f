// SPDX-License-Identifier: Apache-2.0
// A processing node with a worker thread of its own.

#pragma once

#include "ImageProcessingNode.h"
#include "ImageProcessingThread.h"

/// A processing node whose worker thread drains the predecessor's output queue: takes an item, calls Process(),
/// releases the item. Derive from it and implement Process() and Close().
///
/// A node is started once. Derived classes whose Process() uses their own members call StopProcessing() in their
/// destructor, since the worker must have ended before those members go.
///
/// Called by slot from both sides of a library boundary: the order of bases and of virtual operations is fixed.
class IPPCORELIB_EXPORT ImageProcessingNodeWithThread : public ImageProcessingThread, public ImageProcessingNode
{
public:
    ImageProcessingNodeWithThread();

    /// Does nothing; for derived classes to override. Thread: worker thread.
    void ThreadInit() override;

    /// Processes everything that the predecessor has queued, and returns when nothing came for 5 ms or when the
    /// node was stopped. A node without input processes null once. Thread: worker thread.
    void ThreadStep() override;

    /// Does nothing; for derived classes to override. Thread: worker thread.
    void ThreadExit() override;

    ~ImageProcessingNodeWithThread() override;

    /// Starts the worker; see ImageProcessingThread. Thread: the controlling thread.
    void StartProcessing() override;

    /// Stops the worker; see ImageProcessingThread. Thread: the controlling thread, never the worker thread: not from
    /// Process().
    void StopProcessing() override;
};
