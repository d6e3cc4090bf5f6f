// SPDX-License-Identifier: Apache-2.0
// A line of processing nodes.

#pragma once

#include "IPPCoreLibExport.h"

#include <vector>

class ImageProcessingNode;

/// A single line of nodes: every node has at most one input and at most one consumer.
///
/// Order of calls: AddNode() in the direction of the data (source first), Start(), Stop(), then DeleteNodes() or
/// destruction. Items that are queued at Start() or Stop() are forgotten, not released: their pool must be told
/// (ObjectCache::ReleaseAll()).
///
/// Ownership: owns its nodes from the moment they are added until they are removed.
/// Thread: one controlling thread; nothing here is locked.
class IPPCORELIB_EXPORT ImageProcessingPipeline
{
public:
    /// A stopped line without nodes.
    ImageProcessingPipeline();

    /// Closes and deletes the nodes, as DeleteNodes() does. Must be stopped before.
    virtual ~ImageProcessingPipeline();

    ImageProcessingPipeline(const ImageProcessingPipeline&) = delete;
    ImageProcessingPipeline& operator=(const ImageProcessingPipeline&) = delete;

    /// Appends `node`, whose input becomes the last node so far; the first node's input is left as it is. The pipeline
    /// owns it from then on, so a node of somebody else's, the camera for instance, is not added but made the input of
    /// the first.
    void AddNode(ImageProcessingNode* node);

    /// Takes `node` out of the line and gives it back to the caller, neither stopped, closed nor deleted; its
    /// successor is linked to its predecessor. A node that is not in the line changes nothing.
    void RemoveNode(ImageProcessingNode* node);

    /// Clears the output queues, then starts the nodes from last to first, so that consumers stand ready.
    void Start();

    /// Stops the nodes from last to first, then clears the output queues.
    void Stop();

    /// Whether Start() was called, and Stop() not since.
    bool IsRunning() const { return _running; }

    /// Closes and deletes every node, from last to first. Must be stopped before.
    void DeleteNodes();

private:
    void ClearQueues();

    bool _running = false;
    std::vector<ImageProcessingNode*> _nodes;
};
