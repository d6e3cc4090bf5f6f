// SPDX-License-Identifier: Apache-2.0
// A recording kept as a video with both pictures side by side.

#pragma once

#include "Recording.h"

#include <opencv2/videoio.hpp>

#include <filesystem>

namespace simulator {

/// Reads a video file whose left half is the left picture and whose right half is the right one. At the end it starts
/// again.
class SideBySideVideo : public Recording
{
public:
    /// Throws UnreadableRecording when the file is no video.
    explicit SideBySideVideo(std::filesystem::path file);

    RecordedPair read() override;
    bool isExhausted() const override;

private:
    void open();

    std::filesystem::path _file;
    cv::VideoCapture _video;
    bool _isExhausted = false;
};

} // namespace simulator
