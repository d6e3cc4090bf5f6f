#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Prints the table of all benchmarks.

The folder holds what each program printed in each round, in files named PROGRAM.ROUND: either lines of
QUESTION<TAB>CONTENDER<TAB>VALUE or the JSON of Google Benchmark. Ratios are formed within a round. With --complete, a
goal of which one side has no figure at all is a failure: a benchmark that did not run must not look like one that met
its goals.
"""

import argparse
import json
import statistics
import sys
from collections import defaultdict
from pathlib import Path

OURS = "ours"

# What tells whether a missed ratio is within reach on the machine, measured in the same way: the least that any two
# threads need which sleep when there is nothing to do, and the plainest queue of the kinds of parts that ours has.
YARDSTICKS = ("futex ring", "textbook")

# What Google Benchmark says of a benchmark beside its counters.
NOT_COUNTERS = {
    "name", "run_name", "run_type", "family_index", "per_family_instance_index", "repetitions",
    "repetition_index", "threads", "iterations", "real_time", "cpu_time", "time_unit",
}


def google_figures(text):
    for benchmark in json.loads(text)["benchmarks"]:
        question, _, contender = benchmark["name"].rpartition("/")
        yield f"{question} ({benchmark['time_unit']})", contender, benchmark["cpu_time"]
        for counter, value in benchmark.items():
            if counter not in NOT_COUNTERS:
                yield f"{question}: {counter}", contender, value


def plain_figures(text):
    for line in text.splitlines():
        question, contender, value = line.split("\t")
        yield question, contender, float(value)


def figures(path):
    text = path.read_text()
    return google_figures(text) if text.startswith("{") else plain_figures(text)


def read_results(folder):
    """question -> contender -> round -> value, in the order of the first result of each program."""
    results = defaultdict(lambda: defaultdict(dict))
    for path in sorted(folder.iterdir(), key=lambda p: (p.stem, int(p.suffix[1:]))):
        for question, contender, value in figures(path):
            results[question][contender][path.suffix] = value
    return results


def read_goals(path):
    """(question, peer) -> (relation, bound); the peer "-" stands for a limit of its own."""
    goals = {}
    for line in path.read_text().splitlines():
        if line and not line.startswith("#"):
            question, peer, relation, bound = line.split("\t")
            goals[question, peer] = (relation, float(bound))
    return goals


def number(value):
    if value == 0:
        return "0"
    return f"{value:.0f}" if abs(value) >= 100 else f"{value:.3g}"


def spread(values):
    """The median and, behind it, the range."""
    return f"{number(statistics.median(values))} [{number(min(values))} to {number(max(values))}]"


def ratios(ours, theirs):
    """Of the rounds in which both are figures: a difference that noise has turned negative says nothing."""
    return [ours[r] / theirs[r] for r in ours if r in theirs and ours[r] >= 0 and theirs[r] > 0]


def shown_ratios(values, rounds):
    if not values:
        return ""
    return spread(values) + (f", {len(values)} of {rounds}" if len(values) < rounds else "")


def reaches(goal, values):
    relation, bound = goal
    median = statistics.median(values)
    return median <= bound if relation == "<=" else median >= bound


def verdict(goal, ours, yardsticks, rounds):
    """Whether the goal is met; if not, whether the yardsticks, by name, meet it. What must be 0 is up to us alone."""
    if goal is None:
        return ""
    text = f"{goal[0]} {number(goal[1])}: "
    if not ours:
        return text + "UNKNOWN"
    if reaches(goal, ours):
        return text + "met"
    others = [f"{name} {'met' if reaches(goal, values) else 'MISSED'}, {shown_ratios(values, rounds)}"
              for name, values in yardsticks.items() if values]
    return text + "MISSED" + (f" ({'; '.join(others)})" if others and goal[1] != 0 else "")


def rows(results, goals):
    for question, contenders in results.items():
        ours = contenders.get(OURS, {})
        yardsticks = {name: contenders[name] for name in YARDSTICKS if name in contenders}
        for contender, by_round in sorted(contenders.items(), key=lambda item: item[0] != OURS):
            values = list(by_round.values())
            if contender == OURS:
                others = {name: list(by.values()) for name, by in yardsticks.items()}
                yield (question, contender, spread(values), "",
                       verdict(goals.get((question, "-")), values, others, len(values)))
            else:
                ratio = ratios(ours, by_round)
                others = {name: ratios(by, by_round) for name, by in yardsticks.items() if name != contender}
                yield (question, contender, spread(values), shown_ratios(ratio, len(values)),
                       verdict(goals.get((question, contender)), ratio, others, len(values)))


def print_table(table):
    header = ("Question", "Contender", "Median [range]", "Ours : theirs", "Goal")
    widths = [max(len(row[column]) for row in [header, *table]) for column in range(len(header))]
    previous = None
    for row in [header, tuple("-" * width for width in widths), *table]:
        shown = ("" if row[0] == previous else row[0], *row[1:])
        previous = row[0]
        print("  ".join(text.ljust(width) for text, width in zip(shown, widths)).rstrip())


def unanswered(results, goals):
    """The goals that no figure of ours, or none of the peer, speaks to."""
    return [f"{question} / {peer}" for question, peer in goals
            if not {OURS, OURS if peer == "-" else peer} <= results.get(question, {}).keys()]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--complete", action="store_true", help="fail when a goal has no figure")
    parser.add_argument("goals", type=Path)
    parser.add_argument("folder", type=Path)
    arguments = parser.parse_args()

    results = read_results(arguments.folder)
    goals = read_goals(arguments.goals)
    print_table(list(rows(results, goals)))
    missing = unanswered(results, goals) if arguments.complete else []
    if missing:
        sys.exit("\n  ".join(["\nGoals without a figure:", *missing]))


if __name__ == "__main__":
    main()
