// SPDX-License-Identifier: Apache-2.0
// A unit of processing.

#include "ImageProcessingNode.h"

ImageProcessingNode::ImageProcessingNode() = default;

ImageProcessingNode::~ImageProcessingNode() = default;

void ImageProcessingNode::SetInputNode(ImageProcessingNode* input)
{
    _input.store(input, std::memory_order_relaxed);
}
