#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Prints the table of all benchmarks.

usage: table.py GOALS RESULT...

A RESULT is what one program printed in one round, named PROGRAM.ROUND; it is either lines of
QUESTION<TAB>CONTENDER<TAB>VALUE or the JSON of Google Benchmark. Ratios are formed within a round.
"""

import json
import statistics
import sys
from collections import defaultdict
from pathlib import Path

OURS = "ours"

# The least that any two threads need which sleep when there is nothing to do: what the machine itself takes.
FLOOR = "futex ring"

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


def read_results(paths):
    """question -> contender -> round -> value, in the order of the first result of each program."""
    results = defaultdict(lambda: defaultdict(dict))
    for path in sorted(paths, key=lambda p: (p.stem, int(p.suffix[1:]))):
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
    return [ours[r] / theirs[r] for r in ours if r in theirs and theirs[r] != 0]


def reaches(goal, values):
    relation, bound = goal
    median = statistics.median(values)
    return median <= bound if relation == "<=" else median >= bound


def verdict(goal, ours, floor):
    """Whether the goal is met; if not, whether the floor meets it, measured in the same way."""
    if goal is None or not ours:
        return ""
    text = f"{goal[0]} {number(goal[1])}: "
    if reaches(goal, ours):
        return text + "met"
    if floor and not reaches(goal, floor):
        return text + f"MISSED, by the {FLOOR} as well: {spread(floor)}"
    return text + "MISSED"


def rows(results, goals):
    for question, contenders in results.items():
        ours = contenders.get(OURS, {})
        floor = contenders.get(FLOOR, {})
        for contender, by_round in sorted(contenders.items(), key=lambda item: item[0] != OURS):
            values = list(by_round.values())
            if contender == OURS:
                yield (question, contender, spread(values), "",
                       verdict(goals.get((question, "-")), values, list(floor.values())))
            else:
                ratio = ratios(ours, by_round)
                yield (question, contender, spread(values), spread(ratio) if ratio else "",
                       verdict(goals.get((question, contender)), ratio,
                               [] if contender == FLOOR else ratios(floor, by_round)))


def print_table(table):
    header = ("Question", "Contender", "Median [range]", "Ours : theirs", "Goal")
    widths = [max(len(row[column]) for row in [header, *table]) for column in range(len(header))]
    previous = None
    for row in [header, tuple("-" * width for width in widths), *table]:
        shown = ("" if row[0] == previous else row[0], *row[1:])
        previous = row[0]
        print("  ".join(text.ljust(width) for text, width in zip(shown, widths)).rstrip())


def unanswered(results, goals):
    """The goals that no figure speaks to: a benchmark that did not run must not look like one that met its goals."""
    return [f"{question} / {peer}" for question, peer in goals
            if (OURS if peer == "-" else peer) not in results.get(question, {})]


def main(goals_path, *result_paths):
    results = read_results([Path(path) for path in result_paths])
    goals = read_goals(Path(goals_path))
    print_table(list(rows(results, goals)))
    missing = unanswered(results, goals)
    if missing:
        print("\nGoals without a figure:", *missing, sep="\n  ")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
