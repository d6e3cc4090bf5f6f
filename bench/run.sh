#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the peers, builds the benchmarks, runs them several times and prints one table (bench/README.md).
#
#   bench/run.sh [ROUNDS [PROGRAM...]]   five rounds of all programs, unless told otherwise
#   bench/run.sh --quick                 one short round: whether everything still works, not what it costs
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
build="$root/build/bench"
results="$build/results"

rounds=${1:-5}
shift $(($# > 0))
chosen=("$@")
own_options=() google_options=(--benchmark_format=json)
if [ "$rounds" = --quick ]; then
    rounds=1
    own_options+=(--quick)
    google_options+=(--benchmark_min_time=0.001)
fi

packages+=("${benchmark_packages[@]}" python3)
build_options=(-DVYR_BUILD_BENCHMARKS=ON -DBUILD_TESTING=OFF)
install_missing_packages >&2
build_targets benchmarks >&2

# wanted NAME: whether the program was asked for.
wanted() {
    [ ${#chosen[@]} -eq 0 ] || [[ " ${chosen[*]} " == *" $1 "* ]]
}

rm -rf "$results"
mkdir -p "$results"
for round in $(seq "$rounds"); do
    while read -r kind program; do
        name=$(basename "$program")
        wanted "$name" || continue
        echo "Round $round of $rounds: $name" >&2
        if [ "$kind" = google ]; then
            "$program" "${google_options[@]}" >"$results/$name.$round"
        else
            "$program" "${own_options[@]}" >"$results/$name.$round"
        fi
    done <"$build/benchmarks.txt"
done
"$root/bench/table.py" "$root/bench/goals.tsv" "$results"/*
