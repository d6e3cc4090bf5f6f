// SPDX-License-Identifier: Apache-2.0
// The queue of the textbooks: a mutex, a condition variable and a deque.

#include "ThreadedLine.h"

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

class TextbookPool
{
public:
    void Add(PlainItem* item) { _free.push_back(item); }

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
    std::vector<PlainItem*> _free;
};

} // namespace

std::unique_ptr<Line> makeTextbookLine(int hops, const Processors&, Sink& sink)
{
    return std::make_unique<ThreadedLine<TextbookQueue, TextbookPool>>(hops, sink);
}
