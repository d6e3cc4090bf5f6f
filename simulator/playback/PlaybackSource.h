// SPDX-License-Identifier: Apache-2.0
// The camera that shows a recording.

#pragma once

#include "../Source.h"
#include "Recording.h"
#include "Rectification.h"
#include "SensorFit.h"

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace simulator {

/// Shows one recorded pair per frame, whatever the frame rate: none is left out, and after the last comes the first.
///
/// A thread of its own decodes up to eight pairs ahead. Where it cannot keep up the frame is missed, not repeated.
/// Pairs that cannot be read are named on standard error; a hundred of them in a row end the recording.
class PlaybackSource : public Source
{
public:
    /// Opens the recording and decodes its first pair. Throws UnreadableRecording when one of the two fails.
    explicit PlaybackSource(const std::filesystem::path& path);

    /// Plays a recording that is open already, named and calibrated after `path`. Throws like the other.
    PlaybackSource(const std::filesystem::path& path, std::unique_ptr<Recording> recording);
    ~PlaybackSource() override;

    std::string deviceName() const override;

    /// Whether the recording came with a calibration.
    bool undistorts() const override;

    bool next(const PictureRequest& request, StereoPicture& picture) override;

private:
    void decode();
    RecordedPair readPair();
    bool isStopping();

    std::filesystem::path _path;
    std::unique_ptr<Recording> _recording; ///< the decoding thread's, once that runs
    std::optional<Rectification> _rectification;
    RecordedPair _shown;
    RecordedPair _rectified;

    std::mutex _mutex; ///< guards the two below
    std::deque<RecordedPair> _decoded;
    bool _stopping = false;
    std::condition_variable _changed; ///< one was shown, or it is time to stop
    std::thread _thread;
};

} // namespace simulator
