// SPDX-License-Identifier: Apache-2.0
// The camera: its controls and its streaming thread.

#include "Camera.h"

#include "Clock.h"
#include "FrameMaker.h"
#include "ModeTable.h"
#include "TickSchedule.h"

#include <cstdio>
#include <exception>
#include <memory>
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

void prepare(Source& source)
{
    try {
        source.prepare();
    } catch (const std::exception&) {
        // The first frame fails in the same way, and it is told there.
    }
}

/// The next frame; null, as for one that the source misses, when making it fails. That is told once a stream.
VYRFrame1* makeFrame(FrameMaker& maker, double seconds, const Controls& settings, bool& told)
{
    try {
        return maker.make(seconds, settings);
    } catch (const std::exception& problem) {
        if (!told) {
            std::fprintf(stderr, "libVYR: a frame is missed: %s\n", problem.what());
            told = true;
        }
        return nullptr;
    }
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
    if (!_thread.joinable())
        return;
    if (_thread.get_id() == std::this_thread::get_id())
        _thread.detach(); // closed by its own callback: this is the last thing the thread does
    else
        _thread.join();
}

std::string Camera::deviceName() const
{
    return _source->deviceName();
}

bool Camera::start(FrameCallback callback, void* userData)
{
    if (isStreamingThread())
        return false;
    const std::lock_guard<std::mutex> lock(_startStopMutex);
    _stopping = true;
    if (_thread.joinable())
        _thread.join();
    _stopping = false;
    const VYRResolutionInfo streamingMode = [this] {
        const std::lock_guard<std::mutex> settingsLock(_settingsMutex);
        _streamingMode = _mode;
        return _mode;
    }();
    try {
        auto maker = std::make_unique<FrameMaker>(streamingMode, *_source, _ring);
        const float fps = streamingMode.fps;
        _thread = std::thread([self = shared_from_this(), maker = std::move(maker), fps, callback, userData] {
            self->stream(*maker, fps, callback, userData);
        });
    } catch (const std::exception& problem) { // no memory, or no more threads
        std::fprintf(stderr, "libVYR: cannot start the stream: %s\n", problem.what());
        forgetStreamingMode();
        return false;
    }
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
    if (_thread.joinable())
        _thread.join();
}

bool Camera::setMode(const VYRResolutionInfo& mode)
{
    if (!isSupported(mode))
        return false;
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

void Camera::forgetStreamingMode()
{
    const std::lock_guard<std::mutex> lock(_settingsMutex);
    _streamingMode.reset();
}

void Camera::stream(FrameMaker& maker, float fps, FrameCallback callback, void* userData)
{
    _streamingThread = std::this_thread::get_id();

    prepare(*_source); // before time counts, so that it costs no frame
    const TickSchedule schedule(monotonicNow(), static_cast<double>(fps));
    std::int64_t delivered = 0;
    std::int64_t tick = 0;
    bool told = false;
    while (!_stopping) {
        const std::int64_t due = schedule.due(tick);
        sleepUntil(due, _stopping);
        if (_stopping)
            break;
        const std::int64_t age = due - _opened;
        const double seconds = static_cast<double>(age) * 1e-9;
        const Controls settings = controls();
        if (VYRFrame1* const frame = makeFrame(maker, seconds, settings, told)) {
            frame->timestamp = static_cast<std::uint32_t>(age / timestampUnit);
            frame->frameCounter = static_cast<std::uint32_t>(tick);
            if (delivered++ % framesPerSensorReading == 0)
                _inertialUnit.measure(seconds, settings.accelRange, settings.gyroRange, *frame);
            callback(reinterpret_cast<const VYRFrameRecord*>(frame), userData);
        }
        tick = schedule.next(tick, monotonicNow());
    }

    _streamingThread = std::thread::id(); // which the system may give to another thread from now on
    forgetStreamingMode();
}

} // namespace simulator
