#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds the program, and makes two Debian packages and an archive of it:
#
#   build/packages/vyr-dashboard_VERSION_ARCHITECTURE.deb        the program
#   build/packages/vyr-dashboard-dev_VERSION_ARCHITECTURE.deb    what app authors need
#   build/packages/vyr-dashboard-VERSION-Linux-PROCESSOR.tar.gz  both, in a folder that runs wherever it is unpacked
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"

build="$root/build/package"
packages+=(dpkg-dev file gzip)
install_missing_packages

# Hardened as Debian's own packages are. Of the optimisation, ours counts.
cd "$root"
export DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow DEB_CXXFLAGS_MAINT_STRIP=-g
CXXFLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)"
LDFLAGS=$(dpkg-buildflags --get LDFLAGS)
export CXXFLAGS LDFLAGS
build_options+=(-DBUILD_TESTING=OFF)
build_targets all

rm -rf "$root/build/packages"
cpack --config "$build/CPackConfig.cmake" -B "$root/build/packages"
rm -rf "$root/build/packages/_CPack_Packages"
ls -l "$root/build/packages"
