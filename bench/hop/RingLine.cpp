// SPDX-License-Identifier: Apache-2.0
// Lock-free rings with a bare futex to sleep on: a minimal one as the limit of what sleeping consumers can reach, and
// Boost's.

#include "ThreadedLine.h"

#include <boost/lockfree/spsc_queue.hpp>

#include <climits>
#include <ctime>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// A ring for one producer and one consumer, with a place more than the pool has items.
class MinimalRing
{
public:
    bool push(PlainItem* item)
    {
        const unsigned head = _head.load(std::memory_order_relaxed);
        if (head - _tail.load(std::memory_order_acquire) == places)
            return false;
        _items[head % places] = item;
        _head.store(head + 1, std::memory_order_release);
        return true;
    }

    bool pop(PlainItem*& item)
    {
        const unsigned tail = _tail.load(std::memory_order_relaxed);
        if (_head.load(std::memory_order_acquire) == tail)
            return false;
        item = _items[tail % places];
        _tail.store(tail + 1, std::memory_order_release);
        return true;
    }

private:
    static constexpr unsigned places = 32;

    std::array<PlainItem*, places> _items{};
    alignas(64) std::atomic<unsigned> _head{0};
    alignas(64) std::atomic<unsigned> _tail{0};
};

class BoostRing : public boost::lockfree::spsc_queue<PlainItem*, boost::lockfree::capacity<poolSize>>
{
};

/// Sleeping on a word of memory: the consumer announces itself, looks once more, and sleeps; the producer wakes it only
/// when it has announced itself.
class FutexBell
{
public:
    void Announce()
    {
        _sleeping.store(1, std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_seq_cst);
    }

    void Retract() { _sleeping.store(0, std::memory_order_relaxed); }

    void Sleep()
    {
        const timespec limit = {0, longestWait * 1'000'000L};
        syscall(SYS_futex, &_sleeping, FUTEX_WAIT_PRIVATE, 1, &limit, nullptr, 0);
        Retract();
    }

    void Ring()
    {
        std::atomic_thread_fence(std::memory_order_seq_cst);
        if (_sleeping.load(std::memory_order_relaxed) != 0 && _sleeping.exchange(0) != 0)
            syscall(SYS_futex, &_sleeping, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
    }

private:
    alignas(64) std::atomic<int> _sleeping{0};
};

template<typename Ring>
class RingQueue
{
public:
    bool Push(PlainItem* item)
    {
        if (!_ring.push(item))
            return false;
        _bell.Ring();
        return true;
    }

    PlainItem* Pop()
    {
        PlainItem* item = nullptr;
        if (_ring.pop(item))
            return item;
        _bell.Announce();
        if (_ring.pop(item)) {
            _bell.Retract();
            return item;
        }
        _bell.Sleep();
        _ring.pop(item);
        return item;
    }

private:
    Ring _ring;
    FutexBell _bell;
};

/// Free items travel back in a ring of the same kind; nobody sleeps on it.
template<typename Ring>
class RingPool
{
public:
    void Add(PlainItem* item) { _free.push(item); }
    void Give(PlainItem* item) { _free.push(item); }

    PlainItem* Take()
    {
        PlainItem* item = nullptr;
        _free.pop(item);
        return item;
    }

private:
    Ring _free;
};

} // namespace

std::unique_ptr<Line> makeFutexRingLine(int hops, const Processors&, Sink& sink)
{
    return std::make_unique<ThreadedLine<RingQueue<MinimalRing>, RingPool<MinimalRing>>>(hops, sink);
}

std::unique_ptr<Line> makeBoostRingLine(int hops, const Processors&, Sink& sink)
{
    return std::make_unique<ThreadedLine<RingQueue<BoostRing>, RingPool<BoostRing>>>(hops, sink);
}
