// SPDX-License-Identifier: Apache-2.0
// What every contender offers: a line of nodes that items travel through.

#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What all contenders have in common, so that only the hand-over differs.
constexpr int queueLength = 31;
constexpr int poolSize = queueLength; ///< no more than one queue takes, so that no node in the middle is ever refused
constexpr int longestWait = 5;        ///< ms that a consumer sleeps at most; GStreamer and oneTBB have no limit

/// Where items end: the last node of a line reports each one here, at the beginning of its processing.
/// Thread: Arrived() on the line's last thread, the rest on the producer's.
class Sink
{
public:
    /// Room for `latencies` measured items; further ones are counted only.
    explicit Sink(std::size_t latencies);

    /// `sent` is the time just before the push in ns, or 0 for an item whose latency is not asked for.
    void Arrived(std::int64_t sent);

    std::int64_t Count() const { return _count.load(std::memory_order_acquire); }

    /// The latencies so far in ns, in order of arrival. To be called when no item is on its way.
    std::vector<std::int64_t> Latencies() const;

private:
    std::vector<std::int64_t> _latencies;
    std::size_t _measured = 0;
    std::atomic<std::int64_t> _count{0};
};

/// A running line: a pool of items, and for each hop a queue that has a place for each of them and whatever drives the
/// node behind it. The last node gives the item back to the pool. Destruction stops it.
class Line
{
public:
    Line() = default;
    virtual ~Line() = default;

    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    /// Takes an item from the pool, stamps it (when `stamped`) and pushes it. False when nothing was sent.
    /// Thread: the producer's, one at a time.
    virtual bool Send(bool stamped) = 0;
};

/// CPU numbers that the threads of a line may run on.
using Processors = std::vector<int>;

void pinCallingThread(const Processors& processors);

std::int64_t nowNanoseconds();

/// 0 for an item that is not to be measured.
inline std::int64_t stamp(bool stamped)
{
    return stamped ? nowNanoseconds() : 0;
}

/// Makes a line of `hops` hops whose own threads run on `workers`. Called on the producer's thread, which is pinned to
/// `workers` meanwhile, so that threads which a line starts inherit it.
struct Contender
{
    std::string name;
    std::unique_ptr<Line> (*make)(int hops, const Processors& workers, Sink& sink);
};

std::unique_ptr<Line> makeOurQueueLine(int hops, const Processors& workers, Sink& sink);
std::unique_ptr<Line> makeOurLine(int hops, const Processors& workers, Sink& sink);
std::unique_ptr<Line> makeTextbookLine(int hops, const Processors& workers, Sink& sink);
std::unique_ptr<Line> makeFutexRingLine(int hops, const Processors& workers, Sink& sink);
std::unique_ptr<Line> makeBoostRingLine(int hops, const Processors& workers, Sink& sink);
std::unique_ptr<Line> makeTbbLine(int hops, const Processors& workers, Sink& sink);
std::unique_ptr<Line> makeGStreamerLine(int hops, const Processors& workers, Sink& sink);
