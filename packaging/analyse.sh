#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Has clang-format, cppcheck and clang-tidy read all sources, and fails when one of them finds something. What they look
# for, and what they do not, stands in .clang-format, .clang-tidy and packaging/cppcheck-suppressions.txt.
#
#   packaging/analyse.sh [EXPRESSION...]     clang-tidy: only the sources whose path matches one of the expressions
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
cd "$root"

packages+=(clang-format-14 clang-tidy cppcheck python3 "${benchmark_packages[@]}")
install_missing_packages

# Of this version, since others break lines elsewhere.
find . -path './build*' -prune -o \( -name '*.c' -o -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 clang-format-14 --dry-run --Werror

# For what Qt generates, which some sources include. A folder of its own, since the others do without the benchmarks.
build="$root/build/analysis"
build_options=(-DVYR_BUILD_BENCHMARKS=ON -DVYR_WARNINGS_AS_ERRORS=ON)
build_targets all

# Each of our sources once: one that several programs share is not read for each of them.
# Named from here, since cppcheck names the sources as it is given these, and the suppressions name them from here, too.
commands=build/analysis/sources/compile_commands.json
mkdir -p "$(dirname "$commands")"
python3 - "$build" "$commands" <<'END'
import json, sys
build, commands = sys.argv[1:]
with open(build + "/compile_commands.json") as file:
    ours = {entry["file"]: entry for entry in json.load(file) if not entry["file"].startswith(build)}
with open(commands, "w") as file:
    json.dump(list(ours.values()), file)
END

cppcheck --project="$commands" \
    --enable=warning,performance,portability,style --std=c++17 --library=qt,posix,googletest,opencv2 \
    --inline-suppr --suppressions-list=packaging/cppcheck-suppressions.txt --quiet -j "$(nproc)" --error-exitcode=1
run-clang-tidy -quiet -p "$(dirname "$commands")" -j "$(nproc)" "$@"
