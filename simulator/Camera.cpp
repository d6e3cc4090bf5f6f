// SPDX-License-Identifier: Apache-2.0
// The camera: its controls and its streaming thread.

#include "Camera.h"

#include "Clock.h"
#include "FrameMaker.h"
#include "ModeTable.h"
#include "TickSchedule.h"

#include <utility>

namespace simulator {

namespace {

constexpr std::int64_t timestampUnit = 100000; // nanoseconds
constexpr std::int64_t framesPerSensorReading = 10;

VYRResolutionInfo firstMode()
{
    VYRResolutionInfo mode = {};
    enumerateModes(&mode, 1, -1, -1, -1, -1.0F);
    return mode;
}

} // namespace

Camera::Camera(std::unique_ptr<Source> source)
    : _source(std::move(source))
    , _opened(monotonicNow())
    , _mode(firstMode())
{
}

Camera::~Camera()
{
    _stopping = true;
    if (!_thread.joinable()) {
        return;
    }
    if (_thread.get_id() == std::this_thread::get_id()) {
        _thread.detach(); // closed by its own callback: this is the last thing the thread does
    } else {
        _thread.join();
    }
}

std::string Camera::deviceName() const
{
    return _source->deviceName();
}

bool Camera::start(FrameCallback callback, void* userData)
{
    if (isStreamingThread()) {
        return false;
    }
    const std::lock_guard<std::mutex> lock(_startStopMutex);
    _stopping = true;
    if (_thread.joinable()) {
        _thread.join();
    }
    _stopping = false;
    VYRResolutionInfo streamingMode = {};
    {
        const std::lock_guard<std::mutex> settingsLock(_settingsMutex);
        _streamingMode = _mode;
        streamingMode = _mode;
    }
    _thread = std::thread([self = shared_from_this(), streamingMode, callback, userData] {
        self->stream(streamingMode, callback, userData);
    });
    return true;
}

void Camera::stop()
{
    if (isStreamingThread()) {
        _stopping = true; // without the lock, whose owner may be waiting for this very thread
        return;
    }
    const std::lock_guard<std::mutex> lock(_startStopMutex);
    _stopping = true;
    if (_thread.joinable()) {
        _thread.join();
    }
}

bool Camera::setMode(const VYRResolutionInfo& mode)
{
    if (!isSupported(mode)) {
        return false;
    }
    const std::lock_guard<std::mutex> lock(_settingsMutex);
    _mode = mode;
    return true;
}

VYRResolutionInfo Camera::mode() const
{
    const std::lock_guard<std::mutex> lock(_settingsMutex);
    return _streamingMode.value_or(_mode);
}

void Camera::setControls(const std::function<void(Controls&)>& change)
{
    const std::lock_guard<std::mutex> lock(_settingsMutex);
    change(_controls);
}

Controls Camera::controls() const
{
    const std::lock_guard<std::mutex> lock(_settingsMutex);
    return _controls;
}

bool Camera::isStreamingThread() const
{
    return _streamingThread == std::this_thread::get_id();
}

void Camera::stream(const VYRResolutionInfo& mode, FrameCallback callback, void* userData)
{
    _streamingThread = std::this_thread::get_id();

    FrameMaker maker(mode, *_source, _ring);
    const TickSchedule schedule(monotonicNow(), static_cast<double>(mode.fps));
    std::int64_t delivered = 0;
    std::int64_t tick = 0;
    while (!_stopping) {
        const std::int64_t due = schedule.due(tick);
        sleepUntil(due, _stopping);
        if (_stopping) {
            break;
        }
        const std::int64_t age = due - _opened;
        const double seconds = static_cast<double>(age) * 1e-9;
        const Controls settings = controls();
        if (VYRFrame1* const frame = maker.make(seconds, settings)) {
            frame->timestamp = static_cast<std::uint32_t>(age / timestampUnit);
            frame->frameCounter = static_cast<std::uint32_t>(tick);
            if (delivered++ % framesPerSensorReading == 0) {
                _inertialUnit.measure(seconds, settings.accelRange, settings.gyroRange, *frame);
            }
            callback(reinterpret_cast<const VYRFrameRecord*>(frame), userData);
        }
        tick = schedule.next(tick, monotonicNow());
    }

    _streamingThread = std::thread::id(); // which the system may give to another thread from now on
    const std::lock_guard<std::mutex> lock(_settingsMutex);
    _streamingMode.reset();
}

} // namespace simulator
