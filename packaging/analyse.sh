#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Has cppcheck and clang-tidy read all sources, and fails when either finds something. What they look for, and what
# they do not, stands in .clang-tidy and in packaging/cppcheck-suppressions.txt.
#
#   packaging/analyse.sh [EXPRESSION...]     clang-tidy: only the sources whose path matches one of the expressions
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
cd "$root"

packages+=(clang-tidy cppcheck)
install_missing_packages
build_targets all # for what Qt generates, which some sources include

cppcheck --project="$build"/compile_commands.json -i build \
    --enable=warning,performance,portability,style --std=c++17 --library=qt,posix,googletest,opencv2 \
    --suppressions-list=packaging/cppcheck-suppressions.txt --quiet -j "$(nproc)" --error-exitcode=1

[ $# -gt 0 ] || set -- "^$root/(?!build/)"
run-clang-tidy -quiet -p "$build" -j "$(nproc)" "$@"
