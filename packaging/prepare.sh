# SPDX-License-Identifier: Apache-2.0
# What run.sh and test.sh share: the packages that are needed, and the build. Sourced, with `root` set to the top of
# the tree.

build="$root/build/release"

# What is built in or linked with, and what builds and runs the rest.
libraries=(
    qtbase5-dev qttools5-dev libconfig++-dev
    libopencv-calib3d-dev libopencv-core-dev libopencv-imgcodecs-dev libopencv-imgproc-dev libopencv-videoio-dev
    fonts-open-sans
    libgmock-dev libgtest-dev
)
packages=(
    cmake doxygen g++ locales ninja-build pkg-config python3-sphinx qttranslations5-l10n xauth xvfb
    "${libraries[@]}"
)

# What the benchmarks measure with, and their peers.
benchmark_packages=(libbenchmark-dev libboost-dev libgstreamer1.0-dev libtbb-dev)

# What the build is configured with besides, by scripts that need it.
build_options=()

# is_count TEXT LEAST: whether the text is a whole number that is not less.
is_count() {
    [[ $1 =~ ^[0-9]{1,18}$ ]] && ((10#$1 >= $2))
}

# Installs the Debian packages of the list that are missing, and says which.
install_missing_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is not a Debian system; these packages, or their like, are needed: ${packages[*]}"
        return
    fi
    local missing=() package
    for package in "${packages[@]}"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    echo "Installing Debian packages: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Neither root nor sudo: as root, please run: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build_targets TARGET...: configures a Release build, with what else the script has put into build_options, and builds
# the targets.
build_targets() {
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
        "${build_options[@]}"
    cmake --build "$build" --target "$@"
}
