// SPDX-License-Identifier: Apache-2.0
// The camera: its controls and its streaming thread.

#pragma once

#include "Controls.h"
#include "FrameRing.h"
#include "InertialUnit.h"
#include "Source.h"
#include "include/VYR.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace simulator {

using FrameCallback = void (*)(const VYRFrameRecord* record, void* userData);

class FrameMaker;

/// An open camera. Owns its source, the memory of its frames and the thread that makes them.
///
/// Held by shared pointers, one of which the streaming thread has: closed from inside its own callback, the camera
/// lives until that callback returns.
/// Thread: any thread; calls that start and stop wait for each other.
class Camera : public std::enable_shared_from_this<Camera>
{
public:
    explicit Camera(std::unique_ptr<Source> source);
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;

    /// Stops the stream.
    ~Camera();

    std::string deviceName() const;

    /// Starts the stream in the mode last set, after stopping one that runs. False from inside the callback,
    /// and where the system has no thread or no memory for it.
    bool start(FrameCallback callback, void* userData);

    /// Stops the stream and waits for its thread. From inside the callback it only asks the thread to end after it.
    void stop();

    /// Sets the mode of the next start. False, and nothing changes, for one that is not supported.
    bool setMode(const VYRResolutionInfo& mode);

    /// The mode of the running stream, or else the one that was set.
    VYRResolutionInfo mode() const;

    /// Lets `change` set controls; the next frame heeds them.
    void setControls(const std::function<void(Controls&)>& change);

private:
    void stream(FrameMaker& maker, float fps, FrameCallback callback, void* userData);
    void forgetStreamingMode();
    bool isStreamingThread() const;
    Controls controls() const;

    const std::unique_ptr<Source> _source;
    const std::int64_t _opened;

    std::mutex _startStopMutex; ///< guards _thread
    std::thread _thread;
    std::atomic<std::thread::id> _streamingThread = {};
    std::atomic<bool> _stopping = false;

    mutable std::mutex _settingsMutex; ///< guards the three below
    Controls _controls;
    VYRResolutionInfo _mode;
    std::optional<VYRResolutionInfo> _streamingMode;

    FrameRing _ring; ///< as the one below, the streaming thread's
    InertialUnit _inertialUnit;
};

} // namespace simulator
