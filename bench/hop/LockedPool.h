// SPDX-License-Identifier: Apache-2.0
// The pool of the textbooks: a stack of free items behind a mutex.

#pragma once

#include "ThreadedLine.h"

#include <mutex>

/// For the contenders that bring no pool of their own. Thread: any thread.
class LockedPool
{
public:
    void Add(PlainItem* item) { Give(item); }

    PlainItem* Take()
    {
        const std::lock_guard<std::mutex> guard(_mutex);
        if (_free.empty())
            return nullptr;
        PlainItem* const item = _free.back();
        _free.pop_back();
        return item;
    }

    void Give(PlainItem* item)
    {
        const std::lock_guard<std::mutex> guard(_mutex);
        _free.push_back(item);
    }

private:
    std::mutex _mutex;
    std::vector<PlainItem*> _free; ///< guarded by _mutex
};
