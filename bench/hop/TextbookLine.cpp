// SPDX-License-Identifier: Apache-2.0
// The queue of the textbooks: a mutex, a condition variable and a deque.

#include "LockedPool.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace {

class TextbookQueue
{
public:
    bool Push(PlainItem* item)
    {
        {
            const std::lock_guard<std::mutex> guard(_mutex);
            if (_items.size() >= queueLength)
                return false;
            _items.push_back(item);
        }
        _filled.notify_one();
        return true;
    }

    PlainItem* Pop()
    {
        std::unique_lock<std::mutex> guard(_mutex);
        if (!_filled.wait_for(guard, std::chrono::milliseconds(longestWait), [this] { return !_items.empty(); }))
            return nullptr;
        PlainItem* const item = _items.front();
        _items.pop_front();
        return item;
    }

private:
    std::mutex _mutex;
    std::condition_variable _filled;
    std::deque<PlainItem*> _items;
};

} // namespace

std::unique_ptr<Line> makeTextbookLine(int hops, const Processors&, Sink& sink)
{
    return std::make_unique<ThreadedLine<TextbookQueue, LockedPool>>(hops, sink);
}
