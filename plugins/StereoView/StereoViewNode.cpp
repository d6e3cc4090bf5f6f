// SPDX-License-Identifier: Apache-2.0
// Takes frames off the camera and copies their pictures.

#include "StereoViewNode.h"

#include "FrameLayout.h"
#include "PictureMailbox.h"

#include <camera/StereoFrame.h>

namespace {

constexpr auto relaxed = std::memory_order_relaxed;

} // namespace

StereoViewNode::StereoViewNode(PictureMailbox& mailbox, bool readsPictures)
    : _mailbox(mailbox)
    , _readsPictures(readsPictures)
{
    SetName("StereoView");
}

StereoViewNode::~StereoViewNode()
{
    StopProcessing(); // before the members go that the worker uses
}

void StereoViewNode::Close()
{
}

void StereoViewNode::Process(NodeData* item)
{
    const auto begin = std::chrono::steady_clock::now();
    // Only the camera node is ever in front of this one.
    ProcessFrame(*static_cast<const StereoFrame*>(item));
    CountTime(std::chrono::steady_clock::now() - begin);
}

void StereoViewNode::CountTime(std::chrono::nanoseconds time)
{
    _nanoseconds.fetch_add(static_cast<std::uint64_t>(time.count()), relaxed);
    _timed.fetch_add(1, relaxed);
}

void StereoViewNode::ProcessFrame(const StereoFrame& frame)
{
    _framesPerSecond.store(frame.fps, relaxed);
    if (!_readsPictures)
        return;
    const std::optional<RecordPictures> pictures = picturesOf(frame.record);
    if (!pictures) {
        ++_unreadableSinceThen;
        _unreadable.fetch_add(1, relaxed);
        return;
    }
    _mailbox.Back().CopyFrom(*pictures);
    _mailbox.Publish();
    CountMissed(pictures->frameCounter);
    _shown.fetch_add(1, relaxed);
}

void StereoViewNode::CountMissed(std::uint32_t frameCounter)
{
    if (_lastCounter) {
        // Unreadable frames did come; their counters are not to be trusted, but the gap they leave is theirs.
        const std::uint32_t missed = framesMissed(*_lastCounter, frameCounter);
        if (missed > _unreadableSinceThen)
            _dropped.fetch_add(missed - _unreadableSinceThen, relaxed);
    }
    _lastCounter = frameCounter;
    _unreadableSinceThen = 0;
}

StreamCounts StereoViewNode::Counts() const
{
    StreamCounts counts;
    counts.shown = _shown.load(relaxed);
    counts.dropped = _dropped.load(relaxed);
    counts.unreadable = _unreadable.load(relaxed);
    counts.framesPerSecond = _framesPerSecond.load(relaxed);
    return counts;
}

double StereoViewNode::TakeAverageMilliseconds()
{
    constexpr double nanosecondsPerMillisecond = 1e6;
    const std::uint64_t timed = _timed.load(relaxed);
    const std::uint64_t nanoseconds = _nanoseconds.load(relaxed);
    if (timed != _timedBefore) {
        _averageMilliseconds = static_cast<double>(nanoseconds - _nanosecondsBefore)
                             / (static_cast<double>(timed - _timedBefore) * nanosecondsPerMillisecond);
    }
    _timedBefore = timed;
    _nanosecondsBefore = nanoseconds;
    return _averageMilliseconds;
}
