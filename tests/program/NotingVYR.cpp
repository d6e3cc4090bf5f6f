// SPDX-License-Identifier: Apache-2.0
// A camera library that notes the calls of the program and has the simulated camera do the work.

#include "CallLog.h"
#include "ModeText.h"

#include <camera/VYRLibrary.h>

#include <cstdarg>
#include <cstdio>

#include <dlfcn.h>

namespace {

void* simulator()
{
    static void* const library = ::dlopen(SIMULATOR_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", ::dlerror());
        std::abort();
    }
    return library;
}

template<typename Function>
Function* simulated(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(simulator(), name));
}

} // namespace

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the library's

const char* VYRFrameLayout();

bool OpenVYR(void** handle)
{
    noteCall("camera open");
    return simulated<decltype(OpenVYR)>("OpenVYR")(handle);
}

void CloseVYR(void* handle)
{
    noteCall("camera close");
    simulated<decltype(CloseVYR)>("CloseVYR")(handle);
}

bool StartVYR(void* handle, VYRFrameCallback callback, void* userData, bool enabled)
{
    noteCall("camera start");
    return simulated<decltype(StartVYR)>("StartVYR")(handle, callback, userData, enabled);
}

bool StopVYR(void* handle)
{
    noteCall("camera stop");
    return simulated<decltype(StopVYR)>("StopVYR")(handle);
}

int EnumerateResolutions(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps)
{
    const auto enumerate = simulated<decltype(EnumerateResolutions)>("EnumerateResolutions");
    return enumerate(list, capacity, width, height, binning, fps);
}

const char* GetLibVersion()
{
    return simulated<decltype(GetLibVersion)>("GetLibVersion")();
}

const char* VYRFrameLayout()
{
    return simulated<decltype(VYRFrameLayout)>("VYRFrameLayout")();
}

int __VYRParamGet__(void* handle, int id, ...)
{
    const auto get = simulated<decltype(__VYRParamGet__)>("__VYRParamGet__");
    std::va_list arguments;
    va_start(arguments, id);
    void* const first = va_arg(arguments, void*);
    void* const second = id == VYRFrameSize ? va_arg(arguments, void*) : nullptr;
    va_end(arguments);
    return get(handle, id, first, second);
}

int __VYRParamSet__(void* handle, int id, ...)
{
    const auto set = simulated<decltype(__VYRParamSet__)>("__VYRParamSet__");
    int result = 0;
    std::va_list arguments;
    va_start(arguments, id);
    switch (id) {
    case VYRResolution: {
        const VYRResolutionInfo mode = va_arg(arguments, VYRResolutionInfo);
        noteCall("camera mode " + modeText(mode));
        result = set(handle, id, mode);
        break;
    }
    case VYRExposure:
    case VYRGain:
    case VYRLed:
        result = set(handle, id, va_arg(arguments, double), 0);
        break;
    case VYRImuRange: {
        const int accelRange = va_arg(arguments, int);
        const int gyroRange = va_arg(arguments, int);
        result = set(handle, id, accelRange, gyroRange);
        break;
    }
    default:
        result = set(handle, id, va_arg(arguments, int));
        break;
    }
    va_end(arguments);
    return result;
}

// NOLINTEND(bugprone-reserved-identifier)

} // extern "C"
