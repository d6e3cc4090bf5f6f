// SPDX-License-Identifier: Apache-2.0
// Takes frames off the camera and copies their pictures.

#pragma once

#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>

class PictureMailbox;
class StereoFrame;

/// What has come since a node was started.
struct StreamCounts
{
    std::uint64_t shown = 0;      ///< frames whose pictures went into the mailbox
    std::uint64_t dropped = 0;    ///< frames that never came, by the gaps in the camera's frame counter
    std::uint64_t unreadable = 0; ///< frames that came with a record that makes no sense
    float framesPerSecond = 0.0F; ///< as measured by the camera node; 0 in the first second
};

/// The worker behind the camera node: copies both pictures of a frame into the mailbox and lets go of the frame. One
/// node serves from a start to the next stop.
///
/// Ownership: borrows the mailbox, which must outlive the node.
class StereoViewNode : public ImageProcessingNodeWithThread
{
public:
    /// With `readsPictures` false the frames' records are left alone: for camera libraries whose layout is not known.
    StereoViewNode(PictureMailbox& mailbox, bool readsPictures);
    ~StereoViewNode() override;

    /// Does nothing: there is nothing to close.
    void Close() override;

    /// Thread: worker thread.
    void Process(NodeData* item) override;

    /// Thread: any thread. Each number is right by itself; together they may be one frame apart.
    StreamCounts Counts() const;

    /// The average time that Process() took since the last call, in milliseconds; when no frame came since then, what
    /// the last call returned. Timing() counts whole milliseconds, of which copying a pair rarely takes one.
    /// Thread: GUI thread.
    double TakeAverageMilliseconds();

private:
    void CountTime(std::chrono::nanoseconds time);
    void ProcessFrame(const StereoFrame& frame);
    void CountMissed(std::uint32_t frameCounter);

    PictureMailbox& _mailbox;
    const bool _readsPictures;
    std::optional<std::uint32_t> _lastCounter; ///< of the last readable frame; worker thread only
    std::uint32_t _unreadableSinceThen = 0;    ///< worker thread only
    std::atomic<std::uint64_t> _shown{0};
    std::atomic<std::uint64_t> _dropped{0};
    std::atomic<std::uint64_t> _unreadable{0};
    std::atomic<float> _framesPerSecond{0.0F};
    std::atomic<std::uint64_t> _timed{0};       ///< frames that went through Process()
    std::atomic<std::uint64_t> _nanoseconds{0}; ///< that they took together
    std::uint64_t _timedBefore = 0;             ///< both at the last call of TakeAverageMilliseconds(); GUI thread only
    std::uint64_t _nanosecondsBefore = 0;
    double _averageMilliseconds = 0.0;
};
