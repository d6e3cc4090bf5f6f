// SPDX-License-Identifier: Apache-2.0
// A consumer that is too slow at times, on purpose.

#include "UnevenWorker.h"

#include <camera/StereoFrame.h>

#include <chrono>
#include <thread>

namespace {

/// More than the pool has, so that whoever waits for so many has missed some.
constexpr std::uint64_t framesToMiss = 40;

} // namespace

UnevenWorker::UnevenWorker(const LibraryTap& tap, Delivered& delivered, Manner manner)
    : _tap(tap)
    , _delivered(delivered)
    , _manner(manner)
{
}

UnevenWorker::~UnevenWorker()
{
    ImageProcessingNodeWithThread::StopProcessing();
}

void UnevenWorker::ThreadInit()
{
    if (_manner == Manner::ComesLate)
        missFrames();
}

void UnevenWorker::Close()
{
}

void UnevenWorker::Process(NodeData* item)
{
    const VYRFrameRecord* const record = static_cast<StereoFrame*>(item)->record;
    const std::uint64_t number = reinterpret_cast<const NumberedRecord*>(record)->number;
    ++_delivered.frames;
    if (number <= _delivered.lastNumber)
        ++_delivered.outOfOrder;
    _delivered.lastNumber = number;
    if (_manner == Manner::Pauses && --_framesUntilPause == 0)
        missFrames();
}

void UnevenWorker::missFrames() const
{
    const std::uint64_t until = _tap.emitted() + framesToMiss;
    // cppcheck-suppress knownConditionTrueFalse ; the library's thread counts meanwhile
    while (IsRunning() && _tap.emitted() < until)
        std::this_thread::sleep_for(std::chrono::microseconds(200));
}
