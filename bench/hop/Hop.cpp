// SPDX-License-Identifier: Apache-2.0
// What a hop from node to node costs, ours and others', with threads on one core, on two, and free.

#include "Line.h"

#include <bench/Figures.h>
#include <tests/support/AllocationCount.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <random>
#include <set>
#include <thread>

#include <sched.h>
#include <sys/resource.h>

namespace {

struct Placement
{
    std::string name;
    Processors producer;
    Processors workers;
};

struct Lengths
{
    int pacedItems;
    std::int64_t saturatedNanoseconds;
};

constexpr std::int64_t pace = 1'000'000; // ns between items at 1,000 per second

const std::array<Contender, 7> contenders = {{
    {"ours", makeOurQueueLine},
    {"our nodes", makeOurLine},
    {"textbook", makeTextbookLine},
    {"futex ring", makeFutexRingLine},
    {"boost ring", makeBoostRingLine},
    {"GStreamer", makeGStreamerLine},
    {"oneTBB", makeTbbLine},
}};

/// What the process has used up to now.
struct Usage
{
    std::int64_t processorNanoseconds;
    std::int64_t switches;
    std::int64_t allocations;
};

Usage usageNow()
{
    timespec processor;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &processor);
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return {static_cast<std::int64_t>(processor.tv_sec) * 1'000'000'000 + processor.tv_nsec,
            usage.ru_nvcsw + usage.ru_nivcsw, static_cast<std::int64_t>(processAllocationCount())};
}

Processors allowedProcessors()
{
    cpu_set_t set;
    sched_getaffinity(0, sizeof(set), &set);
    Processors allowed;
    for (int processor = 0; processor < CPU_SETSIZE; ++processor)
        if (CPU_ISSET(static_cast<std::size_t>(processor), &set))
            allowed.push_back(processor);
    return allowed;
}

std::vector<Placement> placements()
{
    const Processors all = allowedProcessors();
    std::vector<Placement> result = {{"one core", {all.front()}, {all.front()}}};
    if (all.size() > 1) {
        result.push_back({"two cores", {all[0]}, {all[1]}});
        result.push_back({"free", all, all});
    }
    return result;
}

void sleepUntil(std::int64_t nanoseconds)
{
    const timespec deadline = {nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR)
        ;
}

/// Waits until `count` items have arrived, or no more come; returns whether they have.
bool waitForArrivals(const Sink& sink, std::int64_t count)
{
    const std::int64_t limit = nowNanoseconds() + 1'000'000'000;
    while (sink.Count() < count && nowNanoseconds() < limit)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return sink.Count() >= count;
}

/// Sends `count` items, one every millisecond, and returns how many of them were taken.
std::int64_t sendPaced(Line& line, int count, bool stamped)
{
    std::int64_t taken = 0;
    std::int64_t next = nowNanoseconds();
    for (int i = 0; i < count; ++i) {
        next += pace;
        sleepUntil(next);
        taken += line.Send(stamped) ? 1 : 0;
    }
    return taken;
}

/// Sends as fast as items are taken, for a time; yields when one is refused. Returns how many were taken.
std::int64_t sendSaturated(Line& line, std::int64_t nanoseconds)
{
    std::int64_t taken = 0;
    const std::int64_t end = nowNanoseconds() + nanoseconds;
    while (nowNanoseconds() < end) {
        for (int i = 0; i < 64; ++i) {
            if (line.Send(false))
                ++taken;
            else
                sched_yield();
        }
    }
    return taken;
}

/// A line without nodes: what the pacing itself costs.
class NoLine : public Line
{
public:
    bool Send(bool) override { return false; }
};

/// The processor time of a tick without anything behind it. Thread: the producer's.
double pacerMicroseconds(int count)
{
    NoLine line;
    sendPaced(line, count / 5, false);
    const Usage before = usageNow();
    sendPaced(line, count, false);
    return static_cast<double>(usageNow().processorNanoseconds - before.processorNanoseconds) / 1000.0 / count;
}

double percentile(const std::vector<std::int64_t>& sorted, double fraction)
{
    if (sorted.empty())
        return 0.0;
    const auto index = static_cast<std::size_t>(fraction * static_cast<double>(sorted.size() - 1));
    return static_cast<double>(sorted[index]) / 1000.0;
}

/// Returns how many items were lost.
std::int64_t measurePaced(const std::string& where, const Contender& contender, int hops, const Placement& placement,
                          int items)
{
    // What a tick takes changes within seconds by more than a hop does: right before and right after, without the line.
    pinCallingThread(placement.producer);
    const double pacerBefore = pacerMicroseconds(items / 4);
    Sink sink(static_cast<std::size_t>(items));
    pinCallingThread(placement.workers);
    std::unique_ptr<Line> line = contender.make(hops, placement.workers, sink);
    pinCallingThread(placement.producer);

    const int warmUpItems = items / 5;
    std::int64_t taken = sendPaced(*line, warmUpItems, false);
    waitForArrivals(sink, taken);
    const Usage before = usageNow();
    taken += sendPaced(*line, items, true);
    const Usage after = usageNow();
    waitForArrivals(sink, taken);
    line.reset();
    const double pacer = (pacerBefore + pacerMicroseconds(items / 4)) / 2;

    const std::vector<std::int64_t> latencies = sink.SortedLatencies();
    const double processor = static_cast<double>(after.processorNanoseconds - before.processorNanoseconds) / 1000.0;
    const auto switches = static_cast<double>(after.switches - before.switches);
    const std::string question = where + " at 1,000/s: ";
    printFigure(question + "latency, median (us)", contender.name, percentile(latencies, 0.5));
    printFigure(question + "latency, 99 % (us)", contender.name, percentile(latencies, 0.99));
    printFigure(question + "latency, maximum (us)", contender.name, percentile(latencies, 1.0));
    printFigure(question + "processor time per item, pacer taken off (us)", contender.name, processor / items - pacer);
    printFigure(question + "context switches per item", contender.name, switches / items);
    printFigure(question + "heap allocations per item", contender.name,
                static_cast<double>(after.allocations - before.allocations) / items);
    return taken - sink.Count();
}

/// Returns how many items were lost.
std::int64_t measureSaturated(const std::string& where, const Contender& contender, int hops,
                              const Placement& placement, std::int64_t nanoseconds)
{
    Sink sink(0);
    pinCallingThread(placement.workers);
    const std::unique_ptr<Line> line = contender.make(hops, placement.workers, sink);
    pinCallingThread(placement.producer);

    std::int64_t taken = sendSaturated(*line, nanoseconds / 4);
    const std::int64_t arrivedBefore = sink.Count();
    const std::int64_t started = nowNanoseconds();
    const Usage before = usageNow();
    taken += sendSaturated(*line, nanoseconds);
    const Usage after = usageNow();
    const double seconds = static_cast<double>(nowNanoseconds() - started) / 1e9;
    // cppcheck-suppress duplicateExpression ; the line has counted meanwhile
    const auto arrived = static_cast<double>(sink.Count() - arrivedBefore);
    waitForArrivals(sink, taken);

    const double processor = static_cast<double>(after.processorNanoseconds - before.processorNanoseconds) / 1000.0;
    const auto allocations = static_cast<double>(after.allocations - before.allocations);
    const std::string question = where + " at saturation: ";
    printFigure(question + "items per second (thousands)", contender.name, arrived / seconds / 1000.0);
    printFigure(question + "processor time per item (us)", contender.name, processor / arrived);
    printFigure(question + "context switches per item", contender.name,
                static_cast<double>(after.switches - before.switches) / arrived);
    printFigure(question + "heap allocations per item", contender.name, allocations / arrived);
    return taken - sink.Count();
}

bool isContender(const std::string& name)
{
    return std::any_of(contenders.begin(), contenders.end(),
                       [&name](const Contender& contender) { return contender.name == name; });
}

/// All contenders, beginning with another one each time: who comes first finds the machine in another state.
std::vector<Contender> contendersInTurn()
{
    std::vector<Contender> turn(contenders.begin(), contenders.end());
    const auto first = static_cast<std::ptrdiff_t>(std::random_device()() % turn.size());
    std::rotate(turn.begin(), turn.begin() + first, turn.end());
    return turn;
}

void measureRound(const Lengths& lengths, const std::set<std::string>& chosen)
{
    for (const Placement& placement : placements()) {
        for (const int hops : {1, 3}) {
            const std::string where = (hops == 1 ? "1 hop, " : "3 hops, ") + placement.name;
            for (const Contender& contender : contendersInTurn()) {
                if (!chosen.empty() && chosen.count(contender.name) == 0)
                    continue;
                const std::int64_t lost =
                    measurePaced(where, contender, hops, placement, lengths.pacedItems)
                    + measureSaturated(where, contender, hops, placement, lengths.saturatedNanoseconds);
                printFigure(where + ": items lost", contender.name, static_cast<double>(lost));
            }
        }
    }
}

} // namespace

// hop [--quick] [CONTENDER...]: all contenders, or the named ones only.
int main(int argc, char** argv)
{
    std::set<std::string> chosen(argv + 1, argv + argc);
    const bool quick = chosen.erase("--quick") != 0;
    for (const std::string& name : chosen) {
        if (!isContender(name)) {
            std::fprintf(stderr, "There is no contender %s.\n", name.c_str());
            return 2;
        }
    }
    measureRound(quick ? Lengths{50, 5'000'000} : Lengths{1000, 300'000'000}, chosen);
    return 0;
}
