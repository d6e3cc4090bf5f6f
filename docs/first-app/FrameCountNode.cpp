// SPDX-License-Identifier: Apache-2.0
// Counts the camera's frames.

#include "FrameCountNode.h"

#include <camera/StereoFrame.h>

FrameCountNode::~FrameCountNode()
{
    StopProcessing(); // the worker ends before the members go that it uses
}

void FrameCountNode::Close()
{
}

void FrameCountNode::Process(NodeData* item)
{
    const auto* const frame = static_cast<StereoFrame*>(item);
    _framesPerSecond = frame->fps;
    ++_frames;
}
