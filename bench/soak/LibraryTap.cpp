// SPDX-License-Identifier: Apache-2.0
// Sits between the camera node and whichever camera library is loaded, and counts.

#include "LibraryTap.h"

#include <camera/VYRCameraDevice.h>

#include <algorithm>

#include <dlfcn.h>

namespace {

LibraryTap* tap = nullptr;

template<typename Function>
Function* libraryFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

LibraryTap::LibraryTap(VYRCameraDevice& device, const std::atomic<std::uint64_t>& delivered)
    : _device(device)
    , _delivered(delivered)
{
    for (std::size_t i = 0; i < frameCount; ++i) {
        _frames[i] = device.FrameCache().Acquire();
        _frames[i]->record = nullptr; // a new frame's fields are unset
        _recordOfFrame[i] = &_records[i];
    }
    for (const StereoFrame* frame : _frames)
        device.FrameCache().Release(frame);
    _spare = &_records[frameCount];
    QObject::connect(
        &device, &VYRCameraDevice::QChanged, &device,
        [this](const QString& length) {
            _accepted = true;
            _queueIsFull = length == QLatin1String("31");
        },
        Qt::DirectConnection);
    tap = this;
}

LibraryTap::~LibraryTap()
{
    tap = nullptr;
}

bool LibraryTap::start(void* handle, VYRFrameCallback callback, void* userData, bool enabled)
{
    _callback = callback;
    _userData = userData;
    _lent = 0;
    _deliveredBefore = _delivered;
    static auto* const startLibrary = libraryFunction<decltype(StartVYR)>("StartVYR");
    return startLibrary(handle, &LibraryTap::onCallback, this, enabled);
}

bool LibraryTap::stop(void* handle)
{
    static auto* const stopLibrary = libraryFunction<decltype(StopVYR)>("StopVYR");
    const bool result = stopLibrary(handle);
    // Everybody is quiet now, and the node has not yet taken its frames back.
    std::uint64_t taken = frameCount;
    while (_device.FrameCache().Acquire() != nullptr)
        --taken;
    const auto queued = static_cast<std::uint64_t>(_device.Size());
    _counts.leftQueued += queued;
    _counts.refused += taken - queued;
    return result;
}

bool LibraryTap::poolIsWhole()
{
    std::array<StereoFrame*, frameCount> found{};
    for (StereoFrame*& frame : found)
        frame = _device.FrameCache().Acquire();
    for (const StereoFrame* frame : found)
        _device.FrameCache().Release(frame);
    return std::is_permutation(found.begin(), found.end(), _frames.begin());
}

void LibraryTap::onCallback(const VYRFrameRecord* record, void* userData)
{
    static_cast<LibraryTap*>(userData)->passOn(*record);
}

void LibraryTap::passOn(const VYRFrameRecord& record)
{
    ++_counts.emitted;
    NumberedRecord* const numbered = _spare;
    numbered->head = record;
    numbered->number = _counts.emitted;
    _accepted = false;
    // Asked beforehand: nobody else takes frames of the pool, so that the node finds no fewer.
    const bool mayFindNone = poolMayBeEmpty();
    const bool streamedBefore = _streaming;
    _callback(&numbered->head, _userData);
    const bool streamedAllTheWhile = streamedBefore && _streaming;

    const auto frame = std::find_if(_frames.begin(), _frames.end(), [numbered](const StereoFrame* candidate) {
        return candidate->record == &numbered->head;
    });
    const bool lent = frame != _frames.end();
    // cppcheck-suppress knownConditionTrueFalse ; set by the receiver of the node's signal
    if (!_accepted)
        ++_counts.ignored;
    else if (!lent)
        ++_counts.poolEmpty;
    if (streamedAllTheWhile && !lent && (!_accepted || !mayFindNone))
        ++_counts.baseless;
    if (lent) {
        ++_lent;
        if (_queueIsFull)
            ++_counts.metFull;
        std::swap(_recordOfFrame[static_cast<std::size_t>(frame - _frames.begin())], _spare);
    }
    _emitted.store(_counts.emitted, std::memory_order_relaxed);
}

/// Reckoned from what went through here, for the pool itself may be what is wrong.
bool LibraryTap::poolMayBeEmpty() const
{
    const std::uint64_t takenUp = _delivered - _deliveredBefore;
    const std::uint64_t released = takenUp > 0 ? takenUp - 1 : 0; // at least: the last one may still be in use
    return _lent - released >= frameCount;
}

// The camera node finds these in the program before it finds the library's.
extern "C" {

__attribute__((visibility("default"))) bool StartVYR(void* handle, VYRFrameCallback callback, void* userData,
                                                     bool enabled)
{
    return tap->start(handle, callback, userData, enabled);
}

__attribute__((visibility("default"))) bool StopVYR(void* handle)
{
    return tap->stop(handle);
}

} // extern "C"
