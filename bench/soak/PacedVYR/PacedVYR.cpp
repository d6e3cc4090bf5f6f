// SPDX-License-Identifier: Apache-2.0
// A camera library that calls back at any rate and does nothing else.

#include <camera/VYRLibrary.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdarg>
#include <thread>

namespace {

constexpr VYRResolutionInfo onlyMode = {640, 480, 0, 1'000.0F, 1.0F, 1'000'000.0F};

/// Calls back at fixed points of the clock. Frames that are late come at once: what was asked for is what comes.
class Camera
{
public:
    void setRate(float fps) { _fps = fps; }

    void start(VYRFrameCallback callback, void* userData)
    {
        stop();
        _stopping = false;
        _thread = std::thread([this, callback, userData] { stream(callback, userData); });
    }

    void stop()
    {
        _stopping = true;
        if (_thread.joinable())
            _thread.join();
    }

private:
    void stream(VYRFrameCallback callback, void* userData)
    {
        using std::chrono::duration;
        using std::chrono::steady_clock;
        const auto start = steady_clock::now();
        for (long frame = 0; !_stopping; ++frame) {
            const double due = static_cast<double>(frame) / static_cast<double>(_fps); // seconds
            std::this_thread::sleep_until(start
                                          + std::chrono::duration_cast<steady_clock::duration>(duration<double>(due)));
            VYRFrameRecord& record = _records[static_cast<std::size_t>(frame) % _records.size()];
            record.timestamp = static_cast<std::uint32_t>(due * 10'000.0);
            record.hasSensorData = 1;
            record.temperature = 40.0F;
            callback(&record, userData);
        }
    }

    float _fps = onlyMode.fps;
    std::atomic<bool> _stopping{false};
    std::thread _thread;
    std::array<VYRFrameRecord, 64> _records{};
};

Camera camera;

bool matches(int width, int height, int binning, float fps)
{
    return (width == VYRAny || width == onlyMode.width) && (height == VYRAny || height == onlyMode.height)
        && (binning == VYRAny || binning == onlyMode.binning)
        && (fps == VYRAnyFps || (fps >= onlyMode.minFps && fps <= onlyMode.maxFps));
}

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the library's
extern "C" {

bool OpenVYR(void** handle)
{
    *handle = &camera;
    return true;
}

void CloseVYR(void*)
{
    camera.stop();
}

bool StartVYR(void*, VYRFrameCallback callback, void* userData, bool)
{
    camera.start(callback, userData);
    return true;
}

bool StopVYR(void*)
{
    camera.stop();
    return true;
}

int EnumerateResolutions(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps)
{
    if (capacity < 1 || !matches(width, height, binning, fps))
        return 0;
    *list = onlyMode;
    if (fps != VYRAnyFps)
        list->fps = fps;
    return 1;
}

const char* GetLibVersion()
{
    return "paced test library";
}

int __VYRParamGet__(void*, int id, ...)
{
    if (id != VYRFrameSize)
        return 0;
    va_list arguments;
    va_start(arguments, id);
    *va_arg(arguments, int*) = onlyMode.width;
    *va_arg(arguments, int*) = onlyMode.height;
    va_end(arguments);
    return 0;
}

int __VYRParamSet__(void*, int id, ...)
{
    if (id != VYRResolution)
        return 0;
    va_list arguments;
    va_start(arguments, id);
    camera.setRate(va_arg(arguments, VYRResolutionInfo).fps);
    va_end(arguments);
    return 0;
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
