// SPDX-License-Identifier: Apache-2.0
// What a hop from node to node costs, ours and others', with threads on one core, on two, and free.

#include "Line.h"

#include <bench/Figures.h>
#include <tests/support/AllocationCount.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <thread>
#include <utility>

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
    int turns;
    int warmUpItems; ///< before the paced ones of each turn; in a full run, all blocks of a queue come into use
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

Usage& operator+=(Usage& sum, const Usage& more)
{
    sum.processorNanoseconds += more.processorNanoseconds;
    sum.switches += more.switches;
    sum.allocations += more.allocations;
    return sum;
}

Usage operator-(const Usage& later, const Usage& earlier)
{
    return {later.processorNanoseconds - earlier.processorNanoseconds, later.switches - earlier.switches,
            later.allocations - earlier.allocations};
}

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

/// Waits until `count` items have arrived, or no more come.
void waitForArrivals(const Sink& sink, std::int64_t count)
{
    const std::int64_t limit = nowNanoseconds() + 1'000'000'000;
    while (sink.Count() < count && nowNanoseconds() < limit)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

/// Sends `count` items, one every millisecond, and returns how many of them were taken, a millisecond after the last.
std::int64_t sendPaced(Line& line, int count, bool stamped)
{
    std::int64_t taken = 0;
    std::int64_t next = nowNanoseconds();
    for (int i = 0; i < count; ++i) {
        next += pace;
        sleepUntil(next);
        taken += line.Send(stamped) ? 1 : 0;
    }
    sleepUntil(next + pace);
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

/// What a contender has shown so far, over all its turns.
struct PacedResult
{
    std::vector<std::int64_t> latencies;
    std::int64_t items = 0;
    std::int64_t lost = 0;
    Usage used{};
    std::vector<double> processorMicroseconds; ///< per item, with the pacer taken off, of each turn
};

struct SaturatedResult
{
    std::int64_t items = 0;
    std::int64_t lost = 0;
    std::int64_t nanoseconds = 0;
    Usage used{};
};

void addPacedTurn(PacedResult& result, const Contender& contender, int hops, const Placement& placement,
                  const Lengths& lengths)
{
    const int items = lengths.pacedItems;
    // What a tick takes changes within seconds by more than a hop does: right before and right after, without the line.
    pinCallingThread(placement.producer);
    const double pacerBefore = pacerMicroseconds(items / 3);
    Sink sink(static_cast<std::size_t>(items));
    pinCallingThread(placement.workers);
    std::unique_ptr<Line> line = contender.make(hops, placement.workers, sink);
    pinCallingThread(placement.producer);

    std::int64_t taken = sendPaced(*line, lengths.warmUpItems, false);
    waitForArrivals(sink, taken);
    const Usage before = usageNow();
    taken += sendPaced(*line, items, true);
    const Usage used = usageNow() - before;
    waitForArrivals(sink, taken);
    line.reset();
    const double pacer = (pacerBefore + pacerMicroseconds(items / 3)) / 2;

    const std::vector<std::int64_t> latencies = sink.Latencies();
    result.latencies.insert(result.latencies.end(), latencies.begin(), latencies.end());
    result.items += items;
    result.lost += taken - sink.Count();
    result.used += used;
    result.processorMicroseconds.push_back(static_cast<double>(used.processorNanoseconds) / 1000.0 / items - pacer);
}

void addSaturatedTurn(SaturatedResult& result, const Contender& contender, int hops, const Placement& placement,
                      const Lengths& lengths)
{
    Sink sink(0);
    pinCallingThread(placement.workers);
    const std::unique_ptr<Line> line = contender.make(hops, placement.workers, sink);
    pinCallingThread(placement.producer);

    std::int64_t taken = sendSaturated(*line, lengths.saturatedNanoseconds / 4); // the warm-up
    const std::int64_t arrivedBefore = sink.Count();
    const std::int64_t started = nowNanoseconds();
    const Usage before = usageNow();
    taken += sendSaturated(*line, lengths.saturatedNanoseconds);
    const Usage used = usageNow() - before;
    result.nanoseconds += nowNanoseconds() - started;
    // cppcheck-suppress duplicateExpression ; the line has counted meanwhile
    result.items += sink.Count() - arrivedBefore;
    waitForArrivals(sink, taken);
    result.lost += taken - sink.Count();
    result.used += used;
}

void printPaced(const std::string& question, const std::string& contender, PacedResult result)
{
    std::sort(result.latencies.begin(), result.latencies.end());
    std::sort(result.processorMicroseconds.begin(), result.processorMicroseconds.end());
    const auto items = static_cast<double>(result.items);
    printFigure(question + "latency, median (us)", contender, percentile(result.latencies, 0.5));
    printFigure(question + "latency, 99 % (us)", contender, percentile(result.latencies, 0.99));
    printFigure(question + "latency, maximum (us)", contender, percentile(result.latencies, 1.0));
    printFigure(question + "processor time per item, pacer taken off (us)", contender,
                result.processorMicroseconds[result.processorMicroseconds.size() / 2]);
    printFigure(question + "context switches per item", contender, static_cast<double>(result.used.switches) / items);
    printFigure(question + "heap allocations per item", contender,
                static_cast<double>(result.used.allocations) / items);
}

void printSaturated(const std::string& question, const std::string& contender, const SaturatedResult& result)
{
    const auto items = static_cast<double>(result.items);
    printFigure(question + "items per second (thousands)", contender,
                items * 1e6 / static_cast<double>(result.nanoseconds));
    printFigure(question + "processor time per item (us)", contender,
                static_cast<double>(result.used.processorNanoseconds) / 1000.0 / items);
    printFigure(question + "context switches per item", contender, static_cast<double>(result.used.switches) / items);
    printFigure(question + "heap allocations per item", contender,
                static_cast<double>(result.used.allocations) / items);
}

bool isContender(const std::string& name)
{
    return std::any_of(contenders.begin(), contenders.end(),
                       [&name](const Contender& contender) { return contender.name == name; });
}

/// Those that are `chosen`, or all when none is, in another order each time: who comes after whom matters.
std::vector<Contender> shuffledContenders(const std::set<std::string>& chosen, std::mt19937& random)
{
    std::vector<Contender> shuffled;
    std::copy_if(contenders.begin(), contenders.end(), std::back_inserter(shuffled),
                 [&chosen](const Contender& contender) { return chosen.empty() || chosen.count(contender.name) != 0; });
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    return shuffled;
}

/// All contenders take several short turns: the machine changes within seconds by more than they differ.
void measureRound(const Lengths& lengths, const std::set<std::string>& chosen)
{
    std::mt19937 random{std::random_device()()};
    for (const Placement& placement : placements()) {
        for (const int hops : {1, 3}) {
            std::map<std::string, std::pair<PacedResult, SaturatedResult>> results;
            for (int turn = 0; turn < lengths.turns; ++turn) {
                for (const Contender& contender : shuffledContenders(chosen, random)) {
                    auto& [paced, saturated] = results[contender.name];
                    addPacedTurn(paced, contender, hops, placement, lengths);
                    addSaturatedTurn(saturated, contender, hops, placement, lengths);
                }
            }
            const std::string where = (hops == 1 ? "1 hop, " : "3 hops, ") + placement.name;
            for (const auto& [name, result] : results) {
                const auto& [paced, saturated] = result;
                printPaced(where + " at 1,000/s: ", name, paced);
                printSaturated(where + " at saturation: ", name, saturated);
                printFigure(where + ": items lost", name, static_cast<double>(paced.lost + saturated.lost));
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
    measureRound(quick ? Lengths{1, 10, 50, 5'000'000} : Lengths{5, 200, 250, 60'000'000}, chosen);
    return 0;
}
