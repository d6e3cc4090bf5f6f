// SPDX-License-Identifier: Apache-2.0
// Finds the edges in the camera's frames.

#include "EdgeNode.h"

#include "EdgeMailbox.h"
#include "LeftPicture.h"

#include <camera/StereoFrame.h>

EdgeNode::EdgeNode(EdgeMailbox& mailbox, int threshold)
    : _mailbox(mailbox)
    , _threshold(threshold)
{
    SetName("Edges");
}

EdgeNode::~EdgeNode()
{
    StopProcessing(); // the worker ends before the members go that it uses
}

void EdgeNode::Close()
{
}

void EdgeNode::Process(NodeData* item)
{
    const auto& frame = *static_cast<const StereoFrame*>(item); // only the camera node is ever in front of this one
    const std::optional<GreyPicture> picture = leftPictureOf(frame.record);
    if (!picture)
        return;
    findEdges(*picture, _threshold, _edges);
    _edges.framesPerSecond = frame.fps;
    _mailbox.Put(_edges);
}
