#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the core, the camera and the simulator for 32-bit ARM boards with hard-float registers and runs their tests in
# an emulator. `cmake --build --preset armhf` then builds everything else for such boards.
#
# The libraries of the board are unpacked from Debian's packages into a folder of the build tree and installed nowhere:
# several of them refuse to be installed beside those of another processor.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/packaging/prepare.sh"
cd "$root"

sysroot="$root/build/armhf-root" # as the preset has it
apt="$root/build/armhf-packages"

# Gives apt-get lists and an (empty) inventory of its own, in which armhf is the only architecture. The release without
# its updates will do: nothing of it leaves the build tree.
configure_apt() {
    mkdir -p "$apt/lists/partial" "$apt/archives/partial"
    : >"$apt/status"
    echo "deb http://deb.debian.org/debian $(. /etc/os-release && echo "$VERSION_CODENAME") main" >"$apt/sources.list"
    cat >"$apt/apt.conf" <<END
APT::Architecture "armhf";
APT::Architectures { "armhf"; };
APT::Install-Recommends "false";
APT::Sandbox::User "";
Acquire::Retries "3";
Dir::Cache "$apt";
Dir::Cache::Archives "$apt/archives";
Dir::Etc::SourceList "$apt/sources.list";
Dir::Etc::SourceParts "-";
Dir::State::Lists "$apt/lists";
Dir::State::Status "$apt/status";
END
    export APT_CONFIG="$apt/apt.conf"
}

# Does what the packages' own scripts, which cannot run here, or an installation at / would have done.
complete_sysroot() {
    local link
    find "$sysroot" -name '*.so' -lname '/*' | while read -r link; do
        ln -sfnr "$sysroot$(readlink "$link")" "$link"
    done
    ln -s blas/libblas.so.3 lapack/liblapack.so.3 "$sysroot/usr/lib/arm-linux-gnueabihf"
    # Qt's code generators run on this machine.
    rm -r "$sysroot/usr/lib/qt5/bin"
    ln -s /usr/lib/qt5/bin "$sysroot/usr/lib/qt5/bin"
}

make_sysroot() {
    local package
    rm -rf "$sysroot" "$apt"
    mkdir -p "$sysroot"
    configure_apt
    apt-get -q update
    apt-get -q -y install --download-only "${libraries[@]}"
    for package in "$apt"/archives/*.deb; do
        dpkg-deb --extract "$package" "$sysroot"
    done
    complete_sysroot
    rm -r "$apt"
}

packages=(cmake g++-arm-linux-gnueabihf ninja-build pkg-config qemu-user-static qtbase5-dev-tools qttools5-dev-tools)
install_missing_packages

contents="$sysroot/contents" # written when all of it is there
if [ "$(cat "$contents" 2>/dev/null)" != "${libraries[*]}" ]; then
    make_sysroot
    echo "${libraries[*]}" >"$contents"
fi

cmake --preset armhf
cmake --build --preset armhf --target threaded_tests
ctest --preset armhf
