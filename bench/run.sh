#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the peers, builds the benchmarks, runs them several times and prints one table (bench/README.md).
#
#   bench/run.sh [ROUNDS [PROGRAM...]]   five rounds of all programs, unless told otherwise
#   bench/run.sh --quick [PROGRAM...]    one short round: whether everything still works, not what it costs
#
# Fails when a program fails, or when all were asked for and one of the goals has got no figure.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
build="$root/build/bench"

usage() {
    echo "usage: $0 [ROUNDS | --quick] [PROGRAM...]"
}

rounds=${1:-5}
shift $(($# > 0))
programs=("$@")
own_options=() google_options=(--benchmark_format=json)
case $rounds in
    -h | --help)
        usage
        exit
        ;;
    --quick)
        rounds=1
        results="$build/quick-results" # what was measured stays
        own_options+=(--quick)
        google_options+=(--benchmark_min_time=0.001)
        ;;
    *)
        is_count "$rounds" 1 || { usage >&2; exit 2; }
        results="$build/results"
        ;;
esac

packages+=("${benchmark_packages[@]}" python3)
build_options=(-DVYR_BUILD_BENCHMARKS=ON -DBUILD_TESTING=OFF)
install_missing_packages >&2
build_targets benchmarks >&2

declare -A kinds paths
known=()
while read -r kind path; do
    name=$(basename "$path")
    known+=("$name")
    kinds[$name]=$kind paths[$name]=$path
done <"$build/benchmarks.txt"

table_options=()
if [ ${#programs[@]} -eq 0 ]; then
    programs=("${known[@]}")
    table_options=(--complete)
fi
for name in "${programs[@]}"; do
    [ -n "${kinds[$name]:-}" ] || { echo "There is no $name; there are: ${known[*]}" >&2; exit 2; }
done

rm -rf "$results"
mkdir -p "$results"
outcome=0
for ((round = 1; round <= 10#$rounds; ++round)); do
    for name in "${programs[@]}"; do
        echo "Round $round of $rounds: $name" >&2
        if [ "${kinds[$name]}" = google ]; then options=("${google_options[@]}"); else options=("${own_options[@]}"); fi
        if ! "${paths[$name]}" "${options[@]}" >"$results/$name.$round"; then
            echo "$name failed" >&2
            rm "$results/$name.$round"
            outcome=1
        fi
    done
done
"$root/bench/table.py" "${table_options[@]}" "$root/bench/goals.tsv" "$results" || outcome=1
exit $outcome
