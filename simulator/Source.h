// SPDX-License-Identifier: Apache-2.0
// Where the pictures come from.

#pragma once

#include <cstdint>
#include <string>

namespace simulator {

/// What both sensors see: two pictures of sensorWidth x sensorHeight grey values, row after row. Borrowed.
struct StereoPicture
{
    const std::uint8_t* left = nullptr;
    const std::uint8_t* right = nullptr;
};

/// What is asked of a source for one frame.
struct PictureRequest
{
    double seconds; ///< when the frame is due, since the camera was opened
    int firstRow;   ///< the rows of the sensors that are read: what is in the others does not matter
    int rowCount;
    bool undistort; ///< the receiver wants the lenses' distortion removed
};

/// Gives the picture pairs, one per frame. Implemented by the synthetic scene and by the playback of recordings.
///
/// Thread: made and deleted on any thread, asked on one thread at a time.
class Source
{
public:
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    virtual ~Source() = default;

    /// What the camera is called, for VYRDeviceName. Any thread.
    virtual std::string deviceName() const = 0;

    /// Whether the source itself removes the distortion when asked to. If not, the camera applies that of its nominal
    /// lens. Any thread.
    virtual bool undistorts() const = 0;

    /// Does what would otherwise hold up the first picture, once; later calls find it done. The camera calls it on the
    /// streaming thread before a stream's first frame is due. May throw, and is then tried again by next().
    virtual void prepare() {}

    /// The pair for one frame, valid until the next call. False when there is none yet: the frame is then missed.
    virtual bool next(const PictureRequest& request, StereoPicture& picture) = 0;
};

} // namespace simulator
