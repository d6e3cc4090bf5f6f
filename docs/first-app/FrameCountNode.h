// SPDX-License-Identifier: Apache-2.0
// Counts the camera's frames.

#pragma once

#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>

#include <atomic>

/// The worker behind the camera node: counts frames and notes the frame rate that comes with them.
class FrameCountNode : public ImageProcessingNodeWithThread
{
public:
    ~FrameCountNode() override;

    /// Nothing to close.
    void Close() override;

    /// Thread: worker thread.
    void Process(NodeData* item) override;

    /// Thread: any thread.
    int Frames() const { return _frames; }
    float FramesPerSecond() const { return _framesPerSecond; }

private:
    std::atomic<int> _frames{0};
    std::atomic<float> _framesPerSecond{0.0F};
};
