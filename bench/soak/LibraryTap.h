// SPDX-License-Identifier: Apache-2.0
// Sits between the camera node and whichever camera library is loaded, and counts.

#pragma once

#include <camera/StereoFrame.h>
#include <camera/VYRLibrary.h>

#include <array>
#include <atomic>
#include <cstdint>

class VYRCameraDevice;

/// The record that the camera node is given in place of the library's: a copy of the head, and a number.
struct NumberedRecord
{
    VYRFrameRecord head;
    std::uint64_t number; ///< of the callback, from 1, over all starts
};

/// What has become of the frames, as seen from outside the camera node. Each is counted where it happens, none is the
/// remainder of the others.
struct FrameCounts
{
    std::uint64_t emitted = 0;    ///< callbacks of the library
    std::uint64_t ignored = 0;    ///< came while the node was not streaming yet, or not any more
    std::uint64_t poolEmpty = 0;  ///< got no frame of the pool
    std::uint64_t baseless = 0;   ///< of these two: while the node was streaming and the pool had a frame
    std::uint64_t metFull = 0;    ///< got a frame of the pool and found 31 queued
    std::uint64_t refused = 0;    ///< slots that are neither free nor queued when the camera stops
    std::uint64_t leftQueued = 0; ///< still queued when the camera stops
};

/// Takes the place of StartVYR and StopVYR in this program, and calls the library's own. Every callback passes through
/// here, on its way to the node and back, so that it can be said what has become of its frame.
///
/// One at a time, around one device.
/// Thread: the counts belong to the library's thread while streaming and to the GUI thread otherwise; emitted() may be
/// asked on any thread.
class LibraryTap
{
public:
    /// `delivered` counts the frames that the consumer has taken up; it releases each before it takes up the next.
    LibraryTap(VYRCameraDevice& device, const std::atomic<std::uint64_t>& delivered);
    ~LibraryTap();
    LibraryTap(const LibraryTap&) = delete;
    LibraryTap& operator=(const LibraryTap&) = delete;

    const FrameCounts& counts() const { return _counts; }

    std::uint64_t emitted() const { return _emitted.load(std::memory_order_relaxed); }

    /// Between true and false the node has no reason to ignore a frame, nor to drop one that the pool has a place for:
    /// said when it has started, and taken back before it is stopped.
    void setStreaming(bool streaming) { _streaming = streaming; }

    /// Whether every frame of the idle device's pool is free and there.
    bool poolIsWhole();

    // Called in place of the library.
    bool start(void* handle, VYRFrameCallback callback, void* userData, bool enabled);
    bool stop(void* handle);

private:
    static constexpr std::size_t frameCount = 32;

    static void onCallback(const VYRFrameRecord* record, void* userData);
    void passOn(const VYRFrameRecord& record);
    bool poolMayBeEmpty() const;

    VYRCameraDevice& _device;
    const std::atomic<std::uint64_t>& _delivered;
    VYRFrameCallback _callback = nullptr;
    void* _userData = nullptr;
    std::array<StereoFrame*, frameCount> _frames{};

    // One record for each frame, and a spare one for the frame to come. The record that a frame had before becomes the
    // spare one, so that none is written over while a consumer may read it.
    std::array<NumberedRecord, frameCount + 1> _records{};
    std::array<NumberedRecord*, frameCount> _recordOfFrame{};
    NumberedRecord* _spare = nullptr;

    // Of the frame that is just being passed on:
    bool _accepted = false;    ///< the node has announced it
    bool _queueIsFull = false; ///< and that the queue takes no more

    // Since the latest start:
    std::uint64_t _lent = 0; ///< frames of the pool
    std::uint64_t _deliveredBefore = 0;
    std::atomic<bool> _streaming{false};

    FrameCounts _counts;
    std::atomic<std::uint64_t> _emitted{0};
};
