// SPDX-License-Identifier: Apache-2.0
// Finds the edges in the camera's frames.

#pragma once

#include "EdgeFilter.h"

#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>

#include <atomic>

class EdgeMailbox;

/// The worker behind the camera node: puts the edges of each frame's left picture into the mailbox. One node serves
/// from a start to the next stop.
///
/// Ownership: borrows the mailbox, which must outlive the node.
class EdgeNode : public ImageProcessingNodeWithThread
{
public:
    EdgeNode(EdgeMailbox& mailbox, int threshold);
    ~EdgeNode() override;

    /// What is weaker is no edge: 0 to 255, from the next frame on. Thread: any thread.
    void SetThreshold(int threshold) { _threshold = threshold; }

    /// Does nothing: there is nothing to close.
    void Close() override;

    /// Thread: worker thread.
    void Process(NodeData* item) override;

private:
    EdgeMailbox& _mailbox;
    std::atomic<int> _threshold;
    EdgePicture _edges; ///< the worker's own
};
