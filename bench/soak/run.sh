#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Drives the frame path for FRAMES frames (a million) with 1000 restarts, first with a camera library that calls back
# FPS times a second (5000), then with the simulator in its fastest mode, 250 a second: more than an hour for a million.
# Fails when anything was lost or has grown.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/packaging/prepare.sh"

usage() {
    echo "usage: $0 [FRAMES [FPS]]"
    echo "At least 1600 frames, at least 1 per second; unless told otherwise, 1000000 and 5000."
}

case ${1:-} in -h | --help) usage; exit ;; esac
frames=${1-1000000}
fps=${2-5000}
[ $# -le 2 ] && is_count "$frames" 1600 && is_count "$fps" 1 || { usage >&2; exit 2; }
frames=$((10#$frames))
starts=$((frames / 100 < 1000 ? frames / 100 : 1000))

install_missing_packages
build_targets Soak
folder=$build/bench/soak

# What malloc keeps in reserve for each thread counts as in use, and would look like growth.
export GLIBC_TUNABLES=glibc.malloc.tcache_count=0

outcome=0
LD_LIBRARY_PATH=$folder/PacedVYR "$folder/Soak.run/Soak" --frames "$frames" --starts "$starts" --fps "$fps" || outcome=1
echo
"$folder/Soak.run/Soak" --frames "$frames" --starts "$starts" || outcome=1
exit $outcome
