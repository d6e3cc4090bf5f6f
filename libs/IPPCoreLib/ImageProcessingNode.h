// SPDX-License-Identifier: Apache-2.0
// A unit of processing.

#pragma once

#include "NodeData.h"
#include "NodeTiming.h"
#include "WaitableQueue.h"

#include <atomic>
#include <string>

/// A unit of processing: takes items from its predecessor's output queue, and may push items of its own into its
/// output queue. A node without a predecessor is a source.
///
/// Called by slot from both sides of a library boundary: the order of the virtual operations is fixed.
/// Ownership: owns its output queue, but not the items in it, which belong to their pool; borrows its predecessor,
/// which must outlive its use.
/// Thread: SetInputNode(), StartProcessing(), StopProcessing() and Close() on the one controlling thread;
/// Process() on the node's worker thread.
class IPPCORELIB_EXPORT ImageProcessingNode
{
public:
    /// A node without name, predecessor and items.
    ImageProcessingNode();

    /// Items that are still in the output queue are forgotten, not released.
    virtual ~ImageProcessingNode();

    ImageProcessingNode(const ImageProcessingNode&) = delete;
    ImageProcessingNode& operator=(const ImageProcessingNode&) = delete;

    /// Makes `input` the predecessor, borrowed; null makes the node a source. No check, no lock: meant for a stopped
    /// node.
    virtual void SetInputNode(ImageProcessingNode* input);

    /// Starts the node. Consumers are started before their producers, so that they stand ready.
    virtual void StartProcessing() = 0;

    /// Stops the node: when it returns, Process() is not running and will not be called. Consumers first, here too.
    virtual void StopProcessing() = 0;

    /// The end-of-life hook: the pipeline calls it immediately before it deletes the node.
    virtual void Close() = 0;

    /// Consumes one item; null for a node without input. The caller releases the item afterwards, so whoever needs
    /// it longer copies. It has as long as the producer takes for 31 items; a node that is slower on the average loses
    /// some.
    virtual void Process(NodeData* item) = 0;

    /// The node's name, for people; empty at first.
    const std::string& Name() const { return _name; }

    /// Names the node. Not locked: meant for the time before it is started.
    void SetName(const std::string& name) { _name = name; }

    /// How long Process() takes; kept by ImageProcessingNodeWithThread. Thread: see NodeTiming.
    NodeTiming& Timing() { return _timing; }

    /// The predecessor, borrowed; null for a source. Thread: any thread.
    ImageProcessingNode* InputNode() const { return _input.load(std::memory_order_relaxed); }

    /// Where the node leaves items for its one successor, at most 31. Thread: any thread.
    WaitableQueue<NodeData*>& OutputQueue() { return _outputQueue; }

    /// The number of items in the output queue just now, read without its mutex. Thread: any thread.
    std::int32_t Size() const { return _outputQueue.Size(); }

private:
    std::string _name;
    NodeTiming _timing;
    std::atomic<ImageProcessingNode*> _input{nullptr};
    WaitableQueue<NodeData*> _outputQueue{32};
};

// NOLINTNEXTLINE(bugprone-sizeof-expression): the size of the pointer is meant
static_assert(sizeof(std::atomic<ImageProcessingNode*>) == sizeof(ImageProcessingNode*),
              "the input is a plain pointer");
