// SPDX-License-Identifier: Apache-2.0
// A consumer that is too slow at times, on purpose.

#pragma once

#include "LibraryTap.h"

#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>

#include <atomic>
#include <cstdint>

/// What was delivered, over all workers.
struct Delivered
{
    std::atomic<std::uint64_t> frames{0}; ///< taken up; readable on any thread
    std::uint64_t outOfOrder = 0;
    std::uint64_t lastNumber = 0;
};

/// Notes the number of every frame. As told, it comes up late, so that the queue runs full and refuses a frame, or
/// pauses with a frame in its hands, so that the pool runs empty.
/// Thread: `delivered` is the worker thread's until the worker is stopped, but for the number of frames.
class UnevenWorker : public ImageProcessingNodeWithThread
{
public:
    enum class Manner { Prompt, ComesLate, Pauses };

    UnevenWorker(const LibraryTap& tap, Delivered& delivered, Manner manner);
    ~UnevenWorker() override;

    void ThreadInit() override;
    void Close() override;
    void Process(NodeData* item) override;

private:
    void missFrames() const;

    const LibraryTap& _tap;
    Delivered& _delivered;
    const Manner _manner;
    std::uint64_t _framesUntilPause = 10;
};
