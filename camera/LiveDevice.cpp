// SPDX-License-Identifier: Apache-2.0
// A camera node as the callbacks of the camera library find it: living or gone.

#include "LiveDevice.h"

#include <mutex>

namespace {

std::atomic<LiveDevice*> firstEntry{nullptr}; // never reset: a library's thread may outlive everything else here
std::mutex reserveMutex;                      // guards which entries are reserved, and the list's growing

} // namespace

LiveDevice::Visit::Visit(const void* device)
{
    if (device == nullptr)
        return; // which stands in entries that let nobody in
    LiveDevice* entry = firstEntry.load(std::memory_order_acquire);
    while (entry != nullptr && entry->_device.load(std::memory_order_relaxed) != device)
        entry = entry->_next;
    if (entry == nullptr)
        return;
    _stay.emplace(entry->_visits);
    if (entry->_device.load() != device) // retired just now
        _stay.reset();
}

LiveDevice* LiveDevice::Reserve()
{
    const std::lock_guard<std::mutex> guard(reserveMutex);
    LiveDevice* const first = firstEntry.load(std::memory_order_relaxed);
    LiveDevice* entry = first;
    while (entry != nullptr && entry->_reserved)
        entry = entry->_next;
    if (entry == nullptr) {
        entry = new LiveDevice;
        entry->_next = first;
        firstEntry.store(entry, std::memory_order_release);
    }
    entry->_reserved = true;
    return entry;
}

void LiveDevice::Admit(const void* device)
{
    _device.store(device);
}

void LiveDevice::Retire()
{
    _device.store(nullptr);
    _visits.WaitUntilNone();
    const std::lock_guard<std::mutex> guard(reserveMutex);
    _reserved = false;
}
