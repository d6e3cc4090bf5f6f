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
/// Ownership: owns its output queue; borrows its predecessor, which must outlive its use.
/// Thread: SetInputNode(), StartProcessing(), StopProcessing() and Close() on the one controlling thread;
/// Process() on the node's worker thread.
class IPPCORELIB_EXPORT ImageProcessingNode
{
public:
    ImageProcessingNode();
    virtual ~ImageProcessingNode();

    ImageProcessingNode(const ImageProcessingNode&) = delete;
    ImageProcessingNode& operator=(const ImageProcessingNode&) = delete;

    /// Makes `input` the predecessor; null makes the node a source. No check, no lock: meant for a stopped node.
    virtual void SetInputNode(ImageProcessingNode* input);

    virtual void StartProcessing() = 0;
    virtual void StopProcessing() = 0;

    /// The end-of-life hook: the pipeline calls it immediately before it deletes the node.
    virtual void Close() = 0;

    /// Consumes one item; null for a node without input. The caller releases the item afterwards, so whoever needs
    /// it longer copies.
    virtual void Process(NodeData* item) = 0;

    /// The node's name, for people; empty at first.
    const std::string& Name() const { return _name; }
    void SetName(const std::string& name) { _name = name; }

    NodeTiming& Timing() { return _timing; }

    ImageProcessingNode* InputNode() const { return _input.load(std::memory_order_relaxed); }

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
