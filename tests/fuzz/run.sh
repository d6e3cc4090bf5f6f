#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Looks for texts that the reading of the settings file does not take: tests/fuzz/run.sh [RUNS]
#
# Ends with 0 when none was found in RUNS attempts, ten million unless said otherwise. A text that was found is kept as
# build/fuzz/crash-*: with its defect mended it belongs into the corpus, which the test suite replays.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
source "$root/packaging/prepare.sh"
cd "$root"

usage() {
    echo "usage: $0 [RUNS]"
    echo "1 to 2147483647 runs; unless told otherwise, 10000000."
}

case ${1:-} in -h | --help) usage; exit ;; esac
runs=${1-10000000}
# The fuzzer itself would take what is no number, or too great for it, for none or another, and end well.
[ $# -le 1 ] && is_count "$runs" 1 && ((10#$runs < 2 ** 31)) || { usage >&2; exit 2; }

packages+=(clang libclang-rt-dev)
install_missing_packages
cmake --preset fuzz
cmake --build --preset fuzz --target LoadSettingsFuzzer

# The program reads the settings beside itself; in memory the disk does not hold it up.
folder=$(mktemp -d -p /dev/shm load-settings-XXXXXX)
trap 'rm -rf "$folder"' EXIT
cp build/fuzz/bin/LoadSettingsFuzzer "$folder"
mkdir "$folder/corpus"

# A large store of freed memory would cost most of the time, and what is freed here is soon used again.
export ASAN_OPTIONS=quarantine_size_mb=1
"$folder/LoadSettingsFuzzer" -runs="$runs" -max_len=4096 -timeout=20 -print_final_stats=1 \
    -dict="$here/load-settings.dict" -artifact_prefix=build/fuzz/ \
    "$folder/corpus" "$here/corpus/load-settings"
