// SPDX-License-Identifier: Apache-2.0
// A camera library for tests: logs every call and emits frames on command.

#include "FakeVYR.h"

#include <array>
#include <cstdarg>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <sstream>
#include <utility>

namespace {

struct Callback
{
    VYRFrameCallback function = nullptr;
    void* userData = nullptr;
};

struct Library
{
    std::vector<VYRResolutionInfo> modes = FakeVYR::defaultModes();
    bool opens = true;
    bool starts = true;
    const char* version = "9.8.7";
    std::map<int, std::string> texts;
    std::optional<std::pair<int, int>> frameSize;
    VYRResolutionInfo resolution{};
    bool streaming = false;
    Callback callback;
    std::vector<std::string> calls;
    std::array<VYRFrameRecord, 256> records{};
    std::size_t nextRecord = 0;
    std::function<void()> duringStop;
};

std::mutex mutex; // guards library
Library library;

template<typename... Words>
void log(const Words&... words)
{
    std::ostringstream line;
    const char* separator = "";
    ((line << separator << words, separator = " "), ...);
    library.calls.push_back(line.str());
}

bool matches(const VYRResolutionInfo& mode, int width, int height, int binning, float fps)
{
    return (width == VYRAny || width == mode.width) && (height == VYRAny || height == mode.height)
        && (binning == VYRAny || binning == mode.binning)
        && (fps == VYRAnyFps || (fps >= mode.minFps && fps <= mode.maxFps));
}

void emitOwnRecord(std::uint32_t timestamp, bool hasSensorData, float temperature, bool evenStopped)
{
    Callback callback;
    VYRFrameRecord* record = nullptr;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        if (!library.streaming && !evenStopped)
            return;
        callback = library.callback;
        record = &library.records[library.nextRecord];
        library.nextRecord = (library.nextRecord + 1) % library.records.size();
        *record = VYRFrameRecord{};
        record->timestamp = timestamp;
        record->hasSensorData = hasSensorData ? 1 : 0;
        record->temperature = temperature;
    }
    if (callback.function != nullptr)
        callback.function(record, callback.userData);
}

void emitForeignRecord(const VYRFrameRecord* record, bool evenStopped)
{
    Callback callback;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        if (library.streaming || evenStopped)
            callback = library.callback;
    }
    if (callback.function != nullptr)
        callback.function(record, callback.userData);
}

void setParameter(int id, va_list arguments)
{
    const std::lock_guard<std::mutex> guard(mutex);
    switch (id) {
    case VYRResolution: {
        library.resolution = va_arg(arguments, VYRResolutionInfo);
        const VYRResolutionInfo& mode = library.resolution;
        log("Set", id, mode.width, mode.height, mode.binning, mode.fps);
        break;
    }
    case VYRExposure: {
        const double value = va_arg(arguments, double);
        log("Set", id, value, va_arg(arguments, int));
        break;
    }
    case VYRGain:
    case VYRLed:
        log("Set", id, va_arg(arguments, double));
        break;
    case VYRImuRange: {
        const int accel = va_arg(arguments, int);
        log("Set", id, accel, va_arg(arguments, int));
        break;
    }
    default:
        log("Set", id, va_arg(arguments, int));
        break;
    }
}

/// Fills the registers in which a variadic call passes integers. A caller that forgets an argument of its next call
/// then passes this on, and not a zero that happens to lie there.
inline void leaveNoZeroBehind()
{
#if defined(__x86_64__)
    asm volatile("movl $0x5a5a5a5a, %%edx\n\tmovl $0x5a5a5a5a, %%ecx" ::: "edx", "ecx");
#elif defined(__aarch64__)
    asm volatile("mov w2, #0x5a5a\n\tmov w3, #0x5a5a" ::: "w2", "w3");
#endif
}

} // namespace

namespace FakeVYR {

void reset()
{
    const std::lock_guard<std::mutex> guard(mutex);
    library = Library{};
}

std::vector<VYRResolutionInfo> defaultModes()
{
    return {
        {640, 480, 0, 30.0F, 0.5F, 60.0F},
        {320, 240, 5, 30.0F, 0.5F, 60.0F},
        {320, 120, 5, 30.0F, 0.5F, 200.0F},
    };
}

void setModes(const std::vector<VYRResolutionInfo>& modes)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.modes = modes;
}

void setOpens(bool opens)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.opens = opens;
}

void setStarts(bool starts)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.starts = starts;
}

void setVersion(const char* version)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.version = version;
}

void setText(int id, const std::string& bytes)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.texts[id] = bytes;
}

void setFrameSize(int width, int height)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.frameSize = {width, height};
}

std::vector<std::string> calls()
{
    const std::lock_guard<std::mutex> guard(mutex);
    return library.calls;
}

void clearCalls()
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.calls.clear();
}

void setDuringStop(std::function<void()> function)
{
    const std::lock_guard<std::mutex> guard(mutex);
    library.duringStop = std::move(function);
}

bool isStreaming()
{
    const std::lock_guard<std::mutex> guard(mutex);
    return library.streaming;
}

void emitFrame(std::uint32_t timestamp)
{
    emitOwnRecord(timestamp, false, 0.0F, false);
}

void emitFrameWithTemperature(std::uint32_t timestamp, float temperature)
{
    emitOwnRecord(timestamp, true, temperature, false);
}

void emitRecord(const VYRFrameRecord* record)
{
    emitForeignRecord(record, false);
}

void emitLateRecord(const VYRFrameRecord* record)
{
    emitForeignRecord(record, true);
}

void emitLateFrame(std::uint32_t timestamp)
{
    emitOwnRecord(timestamp, false, 0.0F, true);
}

} // namespace FakeVYR

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the library's
extern "C" {

bool OpenVYR(void** handle)
{
    const std::lock_guard<std::mutex> guard(mutex);
    log("OpenVYR");
    if (library.opens)
        *handle = &library;
    return library.opens;
}

void CloseVYR(void*)
{
    const std::lock_guard<std::mutex> guard(mutex);
    log("CloseVYR");
}

bool StartVYR(void*, VYRFrameCallback callback, void* userData, bool enabled)
{
    const std::lock_guard<std::mutex> guard(mutex);
    log("StartVYR", enabled);
    library.streaming = library.starts;
    if (library.starts)
        library.callback = {callback, userData};
    return library.starts;
}

bool StopVYR(void*)
{
    std::function<void()> duringStop;
    {
        const std::lock_guard<std::mutex> guard(mutex);
        log("StopVYR");
        duringStop = library.duringStop;
    }
    if (duringStop)
        duringStop();
    const std::lock_guard<std::mutex> guard(mutex);
    library.streaming = false;
    return true;
}

int EnumerateResolutions(VYRResolutionInfo* list, int capacity, int width, int height, int binning, float fps)
{
    const std::lock_guard<std::mutex> guard(mutex);
    log("Enumerate", capacity, width, height, binning, fps);
    int count = 0;
    for (const VYRResolutionInfo& mode : library.modes) {
        if (count == capacity)
            break;
        if (!matches(mode, width, height, binning, fps))
            continue;
        list[count] = mode;
        if (fps != VYRAnyFps)
            list[count].fps = fps;
        ++count;
    }
    return count;
}

const char* GetLibVersion()
{
    const std::lock_guard<std::mutex> guard(mutex);
    log("GetLibVersion");
    return library.version;
}

int __VYRParamGet__(void*, int id, ...)
{
    const std::lock_guard<std::mutex> guard(mutex);
    log("Get", id);
    va_list arguments;
    va_start(arguments, id);
    if (id == VYRFrameSize) {
        const std::pair<int, int> asked = {library.resolution.width, library.resolution.height};
        const auto [width, height] = library.frameSize.value_or(asked);
        *va_arg(arguments, int*) = width;
        *va_arg(arguments, int*) = height;
    } else if (id == VYRParameter18 || id == VYRParameter19) {
        *va_arg(arguments, int*) = id * 100;
    } else {
        const std::string& text = library.texts[id];
        std::memcpy(va_arg(arguments, char*), text.data(), std::min<std::size_t>(text.size(), VYRTextSize));
    }
    va_end(arguments);
    return 0;
}

int __VYRParamSet__(void*, int id, ...)
{
    va_list arguments;
    va_start(arguments, id);
    setParameter(id, arguments);
    va_end(arguments);
    leaveNoZeroBehind();
    return 0;
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
