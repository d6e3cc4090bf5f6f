// SPDX-License-Identifier: Apache-2.0
// What the tests of the camera library receive frames with.

#pragma once

#include <VYR.h>
#include <VYRFrame1.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace test {

/// Keeps the frames it gets, and lets a test wait for them. A test may also look at each one inside the callback.
class Receiver
{
public:
    using Look = std::function<void(const VYRFrame1& frame)>;

    explicit Receiver(Look look = nullptr)
        : _look(std::move(look))
    {
    }

    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    /// Stops the camera that streams to it, if it is still there.
    ~Receiver() { StopVYR(_camera); }

    void setCamera(void* camera) { _camera = camera; }

    static void callback(const VYRFrameRecord* record, void* userData)
    {
        static_cast<Receiver*>(userData)->receive(reinterpret_cast<const VYRFrame1*>(record));
    }

    /// Waits, with a limit, until `count` frames have come in all.
    bool waitFor(std::size_t count)
    {
        std::unique_lock<std::mutex> lock(_mutex);
        return _came.wait_for(lock, std::chrono::seconds(20), [&] { return _frames.size() >= count; });
    }

    std::size_t count()
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _frames.size();
    }

    /// The records as they were when they came.
    std::vector<VYRFrame1> frames()
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _frames;
    }

private:
    void receive(const VYRFrame1* frame)
    {
        if (_look)
            _look(*frame);
        const std::lock_guard<std::mutex> lock(_mutex);
        _frames.push_back(*frame);
        _came.notify_all();
    }

    Look _look;
    void* _camera = nullptr;
    std::mutex _mutex;
    std::condition_variable _came;
    std::vector<VYRFrame1> _frames;
};

/// An open camera of a source, closed at the end of the scope.
class OpenedCamera
{
public:
    explicit OpenedCamera(const char* source = nullptr)
    {
        if (source != nullptr)
            setenv("VYR_SOURCE", source, 1);
        else
            unsetenv("VYR_SOURCE");
        _isOpen = OpenVYR(&handle);
    }

    OpenedCamera(const OpenedCamera&) = delete;
    OpenedCamera& operator=(const OpenedCamera&) = delete;

    ~OpenedCamera()
    {
        CloseVYR(handle);
        unsetenv("VYR_SOURCE");
    }

    bool isOpen() const { return _isOpen; }

    /// Sets a mode that must exist.
    bool setMode(int width, int height, int binning, float fps)
    {
        VYRResolutionInfo mode = {};
        return EnumerateResolutions(&mode, 1, width, height, binning, fps) == 1
            && __VYRParamSet__(handle, VYRResolution, mode) == VYRSuccess;
    }

    bool start(Receiver& receiver)
    {
        receiver.setCamera(handle);
        return StartVYR(handle, &Receiver::callback, &receiver, true);
    }

    void* handle = nullptr;

private:
    bool _isOpen = false;
};

/// The pixels of a picture, row after row without the gaps between them.
inline std::vector<std::uint8_t> pixelsOf(const VYRFrame1& frame, const VYRPicturePlace& picture)
{
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* const row = picture.pixels + static_cast<std::size_t>(y) * frame.bytesPerRow;
        pixels.insert(pixels.end(), row, row + frame.width);
    }
    return pixels;
}

inline double meanOf(const std::vector<std::uint8_t>& pixels)
{
    double sum = 0.0;
    for (const std::uint8_t pixel : pixels)
        sum += pixel;
    return sum / static_cast<double>(pixels.size());
}

inline double meanDifference(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += std::abs(a[i] - b[i]);
    return sum / static_cast<double>(a.size());
}

} // namespace test
