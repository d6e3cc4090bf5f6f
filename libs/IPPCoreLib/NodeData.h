// SPDX-License-Identifier: Apache-2.0
// What travels between processing nodes.

#pragma once

#include "IPPCoreLibExport.h"

/// An item on its way from node to node. It belongs to the pool it was lent from; queues and nodes only borrow it.
///
/// Apps and host call it by slot: it has this one virtual operation and no virtual destructor, and must stay so.
class IPPCORELIB_EXPORT NodeData
{
public:
    /// Gives the item back to whoever lent it. Called once, by the worker that consumed it, after
    /// ImageProcessingNode::Process() has returned.
    /// Thread: worker thread.
    virtual void Release() = 0;

protected:
    ~NodeData() = default;
};
