// SPDX-License-Identifier: Apache-2.0
// A fixed-size pool of objects that are lent out and given back without allocation.

#pragma once

#include "AdaptiveMutex.h"
#include "IPPCoreLibExport.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

/// Reports a pool that is destroyed while a slot still holds an object, in the words of a failed assertion in
/// `function`, and aborts; in every build type.
[[noreturn]] IPPCORELIB_EXPORT void failObjectCacheCheck(const char* function);

/// A fixed-size, non-blocking pool: the data path takes objects with Acquire() and gives them back with
/// Release(). When nothing is free, Acquire() returns null at once and the caller drops its data.
///
/// Order of calls: construct, Fill(), then Acquire()/Release()/ReleaseAll() in any order, Clear(), destroy. The
/// pool does not know how to delete its objects: destroying it while a slot still holds one aborts the process.
///
/// Ownership: the pool's user owns the objects through Fill() and Clear(); Acquire() lends.
/// Thread: any thread; every operation holds the pool's one mutex for its whole duration, the callables of
/// Fill() and Clear() included, so these must not call back into the pool.
template<typename T>
class ObjectCache
{
public:
    /// A pool of `slotCount` empty slots, all free; 0 gives a pool that never has anything to lend.
    explicit ObjectCache(std::uint32_t slotCount)
        : _objectCache(slotCount)
    {
    }

    /// Aborts the process when a slot still holds an object.
    ~ObjectCache()
    {
        for (const Slot& slot : _objectCache)
            if (slot.obj != nullptr)
                failObjectCacheCheck(__PRETTY_FUNCTION__);
    }

    ObjectCache(const ObjectCache&) = delete;
    ObjectCache& operator=(const ObjectCache&) = delete;

    /// Puts the result of `creator`, called once per slot, into the slots, and marks them free. Objects that
    /// are already there are overwritten, not disposed of. Throws std::bad_function_call for an empty creator
    /// and whatever the creator throws.
    void Fill(const std::function<T*()>& creator)
    {
        const std::lock_guard<AdaptiveMutex> guard(_mutex);
        for (Slot& slot : _objectCache) {
            slot.obj = creator();
            slot.inUse = false;
        }
    }

    /// Calls `destroyer` once per slot with its object (also with null) and empties the slot. The slots' in-use
    /// marks stay as they are. Throws std::bad_function_call for an empty destroyer and whatever it throws.
    void Clear(const std::function<void(T*)>& destroyer)
    {
        const std::lock_guard<AdaptiveMutex> guard(_mutex);
        for (Slot& slot : _objectCache) {
            destroyer(slot.obj);
            slot.obj = nullptr;
        }
    }

    /// Lends the next free object, or returns null when none is free. The search begins behind the slot taken
    /// last, so that what was given back last is lent again last.
    T* Acquire()
    {
        const std::lock_guard<AdaptiveMutex> guard(_mutex);
        std::uint32_t i = _cursor;
        for (std::size_t looked = 0; looked < _objectCache.size(); ++looked) {
            Slot& slot = _objectCache[i];
            i = i + 1 < _objectCache.size() ? i + 1 : 0;
            if (slot.inUse)
                continue;
            // Deliberate: a slot without an object is marked as well, though its caller gets nothing. An
            // unfilled pool thus runs dry like a filled one.
            slot.inUse = true;
            _cursor = i;
            return slot.obj;
        }
        return nullptr;
    }

    /// Gives `object` back. One that is not in the pool, or that is free already, changes nothing.
    void Release(const T* object)
    {
        const std::lock_guard<AdaptiveMutex> guard(_mutex);
        for (Slot& slot : _objectCache) {
            if (slot.obj == object) {
                slot.inUse = false;
                return;
            }
        }
    }

    /// Marks every slot free, also those whose objects are still out.
    void ReleaseAll()
    {
        const std::lock_guard<AdaptiveMutex> guard(_mutex);
        for (Slot& slot : _objectCache)
            slot.inUse = false;
    }

private:
    struct Slot
    {
        T* obj = nullptr;
        bool inUse = false; ///< handed out and not yet given back
    };

    AdaptiveMutex _mutex; ///< guards everything below
    std::vector<Slot> _objectCache;
    std::uint32_t _cursor = 0; ///< where the next search begins
};
