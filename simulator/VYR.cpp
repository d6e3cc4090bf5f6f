// SPDX-License-Identifier: Apache-2.0
// The exported operations: they find the open camera and pass calls on.

#include "include/VYR.h"

#include "Camera.h"
#include "ModeTable.h"
#include "SourceFactory.h"
#include "include/VYRFrame1.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <string>

using simulator::Camera;
using simulator::Controls;

namespace {

constexpr const char* libraryVersion = "1.0 (simulator)";
constexpr const char* serialNumber = "SIM-0001";
constexpr const char* firmwareVersion = "1.0.0";
constexpr const char* firmwareBuildTime = "2026-11-20 12:00:00";
constexpr std::size_t textSize = 256;

/// The one camera there can be. Never destroyed: a program may end while a callback of another thread runs.
struct OpenCamera
{
    std::mutex mutex; ///< guards the pointer
    std::shared_ptr<Camera> camera;
};

OpenCamera& openCamera()
{
    static auto* const theOne = new OpenCamera;
    return *theOne;
}

/// The camera of a handle; null when the handle is not that of the open camera.
std::shared_ptr<Camera> cameraOf(const void* handle)
{
    OpenCamera& open = openCamera();
    const std::lock_guard<std::mutex> lock(open.mutex);
    return handle != nullptr && handle == open.camera.get() ? open.camera : nullptr;
}

std::shared_ptr<Camera> makeCamera()
{
    const char* const wanted = std::getenv("VYR_SOURCE");
    std::string error;
    try {
        simulator::SourceResult result = simulator::makeSource(wanted);
        if (result.source != nullptr)
            return std::make_shared<Camera>(std::move(result.source));
        error = result.error;
    } catch (const std::exception& exception) {
        error = exception.what();
    }
    if (!error.empty())
        std::fprintf(stderr, "libVYR: VYR_SOURCE=%s: %s\n", wanted != nullptr ? wanted : "", error.c_str());
    return nullptr;
}

int writeText(char* buffer, const std::string& text)
{
    if (buffer == nullptr)
        return VYRValueRefused;
    std::snprintf(buffer, textSize, "%s", text.c_str());
    return VYRSuccess;
}

int writeFrameSize(const Camera& camera, int* width, int* height)
{
    if (width == nullptr || height == nullptr)
        return VYRValueRefused;
    const VYRResolutionInfo mode = camera.mode();
    *width = mode.width;
    *height = mode.height;
    return VYRSuccess;
}

int writeZero(std::int32_t* value)
{
    if (value == nullptr)
        return VYRValueRefused;
    *value = 0;
    return VYRSuccess;
}

int getParameter(const Camera& camera, int id, va_list arguments)
{
    switch (id) {
    case VYRDeviceName:
        return writeText(va_arg(arguments, char*), camera.deviceName());
    case VYRSerialNumber:
        return writeText(va_arg(arguments, char*), serialNumber);
    case VYRFirmwareVersion:
        return writeText(va_arg(arguments, char*), firmwareVersion);
    case VYRFirmwareBuildTime:
        return writeText(va_arg(arguments, char*), firmwareBuildTime);
    case VYRFrameSize: {
        int* const width = va_arg(arguments, int*);
        int* const height = va_arg(arguments, int*);
        return writeFrameSize(camera, width, height);
    }
    case VYRParameter18:
    case VYRParameter19:
        return writeZero(va_arg(arguments, std::int32_t*));
    default:
        return VYRUnknownParameter;
    }
}

int setPercent(Camera& camera, double Controls::*control, double value)
{
    camera.setControls([control, value](Controls& controls) { controls.*control = simulator::percentOf(value); });
    return VYRSuccess;
}

int setFlag(Camera& camera, bool Controls::*control, int value)
{
    camera.setControls([control, value](Controls& controls) { controls.*control = value != 0; });
    return VYRSuccess;
}

int setRanges(Camera& camera, int accelRange, int gyroRange)
{
    if (accelRange < VYR_ACCEL_RANGE_2G || accelRange > VYR_ACCEL_RANGE_16G || gyroRange < VYR_GYRO_RANGE_250
        || gyroRange > VYR_GYRO_RANGE_2000)
        return VYRValueRefused;
    camera.setControls([accelRange, gyroRange](Controls& controls) {
        controls.accelRange = accelRange;
        controls.gyroRange = gyroRange;
    });
    return VYRSuccess;
}

int setParameter(Camera& camera, int id, va_list arguments)
{
    switch (id) {
    case VYRResolution:
        return camera.setMode(va_arg(arguments, VYRResolutionInfo)) ? VYRSuccess : VYRValueRefused;
    case VYRExposure: // the zero after the value means nothing to this camera
        return setPercent(camera, &Controls::exposure, va_arg(arguments, double));
    case VYRGain:
        return setPercent(camera, &Controls::gain, va_arg(arguments, double));
    case VYRLed:
        return setPercent(camera, &Controls::led, va_arg(arguments, double));
    case VYRHorizontalFlip:
        return setFlag(camera, &Controls::horizontalFlip, va_arg(arguments, int));
    case VYRVerticalFlip:
        return setFlag(camera, &Controls::verticalFlip, va_arg(arguments, int));
    case VYRSwapCameras:
        return setFlag(camera, &Controls::swapCameras, va_arg(arguments, int));
    case VYRUndistort:
        return setFlag(camera, &Controls::undistort, va_arg(arguments, int));
    case VYRImuRange: {
        const int accelRange = va_arg(arguments, int);
        const int gyroRange = va_arg(arguments, int);
        return setRanges(camera, accelRange, gyroRange);
    }
    default:
        return VYRUnknownParameter;
    }
}

} // namespace

bool OpenVYR(void** handle)
{
    if (handle == nullptr)
        return false;
    *handle = nullptr;
    OpenCamera& open = openCamera();
    const std::lock_guard<std::mutex> lock(open.mutex);
    if (open.camera != nullptr)
        return false;
    open.camera = makeCamera();
    *handle = open.camera.get();
    return open.camera != nullptr;
}

void CloseVYR(void* handle)
{
    const std::shared_ptr<Camera> camera = cameraOf(handle);
    if (camera == nullptr)
        return;
    camera->stop();
    OpenCamera& open = openCamera();
    const std::lock_guard<std::mutex> lock(open.mutex);
    if (open.camera == camera)
        open.camera.reset();
}

bool StartVYR(void* handle, void (*callback)(const VYRFrameRecord* record, void* userData), void* userData,
              bool /*flag*/)
{
    const std::shared_ptr<Camera> camera = cameraOf(handle);
    return camera != nullptr && callback != nullptr && camera->start(callback, userData);
}

bool StopVYR(void* handle)
{
    const std::shared_ptr<Camera> camera = cameraOf(handle);
    if (camera == nullptr)
        return false;
    camera->stop();
    return true;
}

int EnumerateResolutions(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps)
{
    return simulator::enumerateModes(list, capacity, width, height, binning, fps);
}

const char* GetLibVersion()
{
    return libraryVersion;
}

const char* VYRFrameLayout()
{
    return VYR_FRAME_1_LAYOUT;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the library's names

int __VYRParamGet__(void* handle, int id, ...)
{
    const std::shared_ptr<Camera> camera = cameraOf(handle);
    if (camera == nullptr)
        return VYRNoCamera;
    va_list arguments;
    va_start(arguments, id);
    const int result = getParameter(*camera, id, arguments);
    va_end(arguments);
    return result;
}

int __VYRParamSet__(void* handle, int id, ...)
{
    const std::shared_ptr<Camera> camera = cameraOf(handle);
    if (camera == nullptr)
        return VYRNoCamera;
    va_list arguments;
    va_start(arguments, id);
    const int result = setParameter(*camera, id, arguments);
    va_end(arguments);
    return result;
}

// NOLINTEND(bugprone-reserved-identifier)
