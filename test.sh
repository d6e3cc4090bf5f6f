#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds everything and runs every test.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$root/packaging/prepare.sh"

install_missing_packages
build_targets all

exec ctest --test-dir "$build" --output-on-failure --parallel 2
