// SPDX-License-Identifier: Apache-2.0
// The camera that shows a recording.

#include "PlaybackSource.h"

#include "PictureFolder.h"
#include "SideBySideVideo.h"

#include <cstddef>
#include <cstdio>
#include <utility>

namespace simulator {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t decodedAhead = 8;
constexpr int mostFailures = 100; // in a row
constexpr const char* calibrationName = "stereo.yml";

std::unique_ptr<Recording> openRecording(const fs::path& path)
{
    if (path.empty())
        throw UnreadableRecording("name a folder or a video file after playback:");
    if (fs::is_directory(path))
        return std::make_unique<PictureFolder>(path);
    if (!fs::exists(path))
        throw UnreadableRecording(path.string() + ": no such file or folder");
    return std::make_unique<SideBySideVideo>(path);
}

} // namespace

PlaybackSource::PlaybackSource(const fs::path& path)
    : PlaybackSource(path, openRecording(path))
{
}

PlaybackSource::PlaybackSource(const fs::path& path, std::unique_ptr<Recording> recording)
    : _path(path)
    , _recording(std::move(recording))
{
    const RecordedPair first = _recording->read();
    const SensorFit leftFit(first.left.size());
    _decoded.push_back({leftFit.apply(first.left), SensorFit(first.right.size()).apply(first.right)});
    const fs::path calibration = path / calibrationName;
    if (fs::exists(calibration))
        _rectification.emplace(calibration, leftFit);
    _thread = std::thread(&PlaybackSource::decode, this);
}

PlaybackSource::~PlaybackSource()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _stopping = true;
    }
    _changed.notify_one();
    _thread.join();
}

std::string PlaybackSource::deviceName() const
{
    const fs::path name = _path.has_filename() ? _path.filename() : _path.parent_path().filename();
    return "VYR Simulator playing " + name.string();
}

bool PlaybackSource::undistorts() const
{
    return _rectification.has_value();
}

bool PlaybackSource::next(const PictureRequest& request, StereoPicture& picture)
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (_decoded.empty())
            return false;
        _shown = std::move(_decoded.front());
        _decoded.pop_front();
    }
    _changed.notify_one();
    if (request.undistort && _rectification) {
        _rectification->apply(0, _shown.left, _rectified.left);
        _rectification->apply(1, _shown.right, _rectified.right);
        picture = {_rectified.left.data, _rectified.right.data};
    } else {
        picture = {_shown.left.data, _shown.right.data};
    }
    return true;
}

void PlaybackSource::decode()
{
    int failures = 0;
    while (!_recording->isExhausted() && failures < mostFailures && !isStopping()) {
        RecordedPair pair;
        try {
            pair = readPair();
        } catch (const std::exception& problem) {
            ++failures;
            const bool ends = _recording->isExhausted() || failures == mostFailures;
            std::fprintf(stderr, "libVYR: %s; %s\n", problem.what(),
                         ends ? "the recording ends" : "the recording goes on without it");
            continue;
        }
        failures = 0;
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait(lock, [this] { return _stopping || _decoded.size() < decodedAhead; });
        if (!_stopping)
            _decoded.push_back(std::move(pair));
    }
}

bool PlaybackSource::isStopping()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _stopping;
}

RecordedPair PlaybackSource::readPair()
{
    const RecordedPair pair = _recording->read();
    return {SensorFit(pair.left.size()).apply(pair.left), SensorFit(pair.right.size()).apply(pair.right)};
}

} // namespace simulator
