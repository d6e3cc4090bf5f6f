// SPDX-License-Identifier: Apache-2.0
// A processing node with a worker thread of its own.

#include "ImageProcessingNodeWithThread.h"

#include "NodeData.h"

namespace {

constexpr std::int32_t quietPeriod = 5; // ms without an item after which a step returns

} // namespace

ImageProcessingNodeWithThread::ImageProcessingNodeWithThread() = default;

ImageProcessingNodeWithThread::~ImageProcessingNodeWithThread()
{
    ImageProcessingThread::StopProcessing();
}

void ImageProcessingNodeWithThread::ThreadInit()
{
}

void ImageProcessingNodeWithThread::ThreadStep()
{
    ImageProcessingNode* const input = InputNode();
    if (input == nullptr) {
        Timing().BeginTiming();
        Process(nullptr);
        Timing().EndTiming();
        return;
    }
    while (IsRunning()) {
        NodeData* const item = input->OutputQueue().Pop(quietPeriod);
        if (item == nullptr)
            return;
        Timing().BeginTiming();
        Process(item);
        item->Release();
        Timing().EndTiming();
    }
}

void ImageProcessingNodeWithThread::ThreadExit()
{
}

void ImageProcessingNodeWithThread::StartProcessing()
{
    ImageProcessingThread::StartProcessing();
}

void ImageProcessingNodeWithThread::StopProcessing()
{
    ImageProcessingThread::StopProcessing();
}
