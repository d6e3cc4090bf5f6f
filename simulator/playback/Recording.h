// SPDX-License-Identifier: Apache-2.0
// A recording that is played back.

#pragma once

#include <opencv2/core/mat.hpp>

#include <stdexcept>

namespace simulator {

/// Thrown where a recording cannot be read; the text names the file and what is wrong with it.
class UnreadableRecording : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// One pair of pictures: 8-bit grey, of any size.
struct RecordedPair
{
    cv::Mat left;
    cv::Mat right;
};

/// Reads pairs one after the other, and after the last one the first one again.
///
/// Thread: one thread at a time.
class Recording
{
public:
    Recording() = default;
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    virtual ~Recording() = default;

    /// The next pair. Throws UnreadableRecording for one that cannot be read, which is left out from then on.
    virtual RecordedPair read() = 0;

    /// Whether nothing readable is left.
    virtual bool isExhausted() const = 0;
};

} // namespace simulator
