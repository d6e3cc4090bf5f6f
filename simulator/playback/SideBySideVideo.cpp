// SPDX-License-Identifier: Apache-2.0
// A recording kept as a video with both pictures side by side.

#include "SideBySideVideo.h"

#include <opencv2/core/utils/logger.hpp>
#include <opencv2/imgproc.hpp>

#include <utility>

namespace simulator {

namespace {

/// Keeps OpenCV from reporting what the user is told in one line anyway.
class QuietOpenCV
{
public:
    QuietOpenCV()
        : _level(cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT))
    {
    }

    QuietOpenCV(const QuietOpenCV&) = delete;
    QuietOpenCV& operator=(const QuietOpenCV&) = delete;

    ~QuietOpenCV() { cv::utils::logging::setLogLevel(_level); }

private:
    cv::utils::logging::LogLevel _level;
};

} // namespace

SideBySideVideo::SideBySideVideo(std::filesystem::path file)
    : _file(std::move(file))
{
    open();
}

/// Starting again means opening again: not every format can be wound back.
void SideBySideVideo::open()
{
    const QuietOpenCV quiet;
    // Of all that OpenCV can read videos with, these two read files and bring no devices and plug-ins along.
    if (!_video.open(_file.string(), cv::CAP_FFMPEG) && !_video.open(_file.string(), cv::CAP_OPENCV_MJPEG)) {
        _isExhausted = true;
        throw UnreadableRecording(_file.string() + ": cannot be decoded as a video");
    }
}

RecordedPair SideBySideVideo::read()
{
    cv::Mat both;
    if (!_video.read(both)) {
        open();
        if (!_video.read(both)) {
            _isExhausted = true;
            throw UnreadableRecording(_file.string() + ": has no pictures");
        }
    }
    if (both.channels() > 1)
        cv::cvtColor(both, both, cv::COLOR_BGR2GRAY);
    const int half = both.cols / 2;
    if (half == 0) {
        _isExhausted = true;
        throw UnreadableRecording(_file.string() + ": is too narrow for two pictures side by side");
    }
    return {both.colRange(0, half), both.colRange(half, 2 * half)};
}

bool SideBySideVideo::isExhausted() const
{
    return _isExhausted;
}

} // namespace simulator
