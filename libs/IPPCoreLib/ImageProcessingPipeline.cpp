// SPDX-License-Identifier: Apache-2.0
// A line of processing nodes.

#include "ImageProcessingPipeline.h"

#include "ImageProcessingNode.h"

#include <algorithm>

ImageProcessingPipeline::ImageProcessingPipeline() = default;

ImageProcessingPipeline::~ImageProcessingPipeline()
{
    DeleteNodes();
}

void ImageProcessingPipeline::AddNode(ImageProcessingNode* node)
{
    if (!_nodes.empty())
        node->SetInputNode(_nodes.back());
    _nodes.push_back(node);
}

void ImageProcessingPipeline::RemoveNode(ImageProcessingNode* node)
{
    const auto found = std::find(_nodes.begin(), _nodes.end(), node);
    if (found == _nodes.end())
        return;
    const auto next = found + 1;
    if (next != _nodes.end())
        (*next)->SetInputNode(found == _nodes.begin() ? nullptr : *(found - 1));
    _nodes.erase(found);
}

void ImageProcessingPipeline::Start()
{
    ClearQueues();
    std::for_each(_nodes.rbegin(), _nodes.rend(), [](ImageProcessingNode* node) { node->StartProcessing(); });
    _running = true;
}

void ImageProcessingPipeline::Stop()
{
    _running = false;
    std::for_each(_nodes.rbegin(), _nodes.rend(), [](ImageProcessingNode* node) { node->StopProcessing(); });
    ClearQueues();
}

void ImageProcessingPipeline::DeleteNodes()
{
    std::for_each(_nodes.rbegin(), _nodes.rend(), [](ImageProcessingNode* node) {
        node->Close();
        delete node;
    });
    _nodes.clear();
}

void ImageProcessingPipeline::ClearQueues()
{
    for (ImageProcessingNode* node : _nodes)
        node->OutputQueue().Clear();
}
