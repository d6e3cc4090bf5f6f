#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the packages and uses them as people do who have nothing but Debian 12: in fresh systems below
# build/package-test, without a compiler, with users who are no administrators.
#
#   deb/      the Debian packages: installed, used by two people, removed, purged; then an app built with them
#   folder/   the archive, unpacked in somebody's home
#
# The pictures that it takes of the screen lie beside these; the systems stay to be looked into. What apt fetched is
# kept for the next time in debs/.
#
# Needs to be run by root. All mounts, and whatever still runs, go with the script, however it ends: it has a process
# and a mount namespace of its own.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
work="$root/build/package-test"

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

step() {
    printf '%4d s  %s\n' "$SECONDS" "$*"
}

prepare() {
    source "$root/packaging/prepare.sh"
    packages=(debootstrap imagemagick lintian openbox wmctrl x11-utils xauth xdotool xvfb)
    install_missing_packages
    "$root/packaging/make-packages.sh"
    lintian --allow-root --fail-on error "$root"/build/packages/*.deb
    mkdir -p "$work"
    rm -f "$work"/*.png
}

if [ "${1:-}" != --in-namespace ]; then
    [ "$(id -u)" -eq 0 ] || fail "only root may make such systems"
    prepare
    exec xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" \
        unshare --mount --pid --fork --kill-child --mount-proc "$0" --in-namespace
fi

# --- systems --------------------------------------------------------------------------------------------------------

# The mirror that this machine uses.
mirror() {
    local address
    address=$(apt-get indextargets --format '$(REPO_URI)' "Created-By: Packages" "Codename: bookworm" | head -n 1)
    echo "${address:-http://deb.debian.org/debian}"
}

# make_system NAME: a fresh one, with two users as adduser makes them.
make_system() {
    local system="$work/$1"
    rm -rf "$system"
    if [ ! -d "$work/base" ]; then
        mkdir -p "$work/debootstrap" "$work/debs/partial"
        debootstrap --variant=minbase --cache-dir="$work/debootstrap" bookworm "$work/base" "$(mirror)" \
            >"$work/debootstrap.log"
    fi
    cp -a "$work/base" "$system"
    echo force-unsafe-io >"$system/etc/dpkg/dpkg.cfg.d/test" # what a power cut leaves of it does not matter
    mount -t proc proc "$system/proc"
    mount -t tmpfs tmpfs "$system/dev/shm"
    mount --bind "$work/debs" "$system/var/cache/apt/archives"
    local user
    for user in anna ben; do
        chroot "$system" adduser --quiet --disabled-password --gecos "" "$user"
        install -o "$(stat -c %u "$system/home/$user")" -m 600 "$XAUTHORITY" "$system/home/$user/.Xauthority"
    done
    inside "$1" apt-get -q update >>"$work/apt.log"
    no_compiler "$1"
}

# inside SYSTEM COMMAND...: as root.
inside() {
    local system="$work/$1"
    shift
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive chroot "$system" "$@"
}

# as_user SYSTEM USER COMMAND...: with the rights that the user has at login, and this screen.
as_user() {
    local system=$1 user=$2
    shift 2
    inside "$system" runuser -u "$user" -- env HOME="/home/$user" USER="$user" DISPLAY="$DISPLAY" \
        XAUTHORITY="/home/$user/.Xauthority" "$@"
}

# install_packages SYSTEM PACKAGE...: with nothing that they do not depend on.
install_packages() {
    local system=$1
    shift
    inside "$system" apt-get -q -y --no-install-recommends install "$@" >>"$work/apt.log" 2>&1 || {
        tail "$work/apt.log" >&2
        fail "apt-get install $*"
    }
}

no_compiler() {
    local name
    for name in c++ cc clang cmake g++ gcc make; do
        ! inside "$1" sh -c "command -v $name" || fail "$1 has a compiler: $name"
    done
}

# --- the screen ------------------------------------------------------------------------------------------------------

# wait_until WHAT COMMAND...: for two minutes at most.
wait_until() {
    local what=$1 limit=$((SECONDS + 120))
    shift
    until "$@"; do
        if [ "$SECONDS" -ge "$limit" ]; then
            import -silent -window root "$work/failure.png" || true
            fail "waited in vain: $what"
        fi
        sleep 0.2
    done
}

# The windows and their titles; fails when one goes away meanwhile.
list_windows() {
    wmctrl -l 2>/dev/null
}

# The X window whose title begins so; fails when there is none.
window_titled() {
    list_windows | awk -v title="$1" 'index($0, " " title) { print $1; found = 1 } END { exit !found }'
}

no_window_titled() {
    local windows
    windows=$(list_windows) && [[ "$windows" != *" $1"* ]]
}

capture() {
    import -silent -window root "$work/$1.png"
}

# Whether the area of the left picture is full of detail and changes.
shows_live_frames() {
    local area=400x300+80+250 changed colours
    import -silent -window root -crop "$area" "$work/first.ppm"
    import -silent -window root -crop "$area" "$work/second.ppm"
    changed=$(compare -metric AE "$work/first.ppm" "$work/second.ppm" null: 2>&1 || true)
    colours=$(identify -format %k "$work/second.ppm")
    [ "$colours" -gt 100 ] && awk -v changed="$changed" 'BEGIN { exit !(changed + 0 > 12000) }' # a tenth of it
}

# Whether the camera has reported something, which it does once a second.
shows_status() {
    import -silent -window root -crop 500x16+46+717 "$work/status.ppm"
    [ "$(identify -format %k "$work/status.ppm")" -gt 5 ]
}

# --- the program -----------------------------------------------------------------------------------------------------

# start SYSTEM USER COMMAND...: until its window shows live frames.
start() {
    as_user "$@" 2>"$work/program.log" &
    program=$!
    wait_until "the window" window_titled "VYR Dashboard - Stereo View" >/dev/null
    wait_until "live frames" shows_live_frames
    wait_until "the status" shows_status
}

# Closes the window as its frame's button does.
close() {
    wmctrl -c "VYR Dashboard - "
    local status=0
    wait "$program" || status=$?
    [ "$status" -eq 0 ] || fail "the program ended with $status: $(cat "$work/program.log")"
    wait_until "the window gone" no_window_titled "VYR Dashboard - "
}

# Whether desktops tell by the class of the window whose icon it is.
belongs_to_desktop_entry() {
    local class
    class=$(sed -n 's/^StartupWMClass=//p' "$work/deb/usr/share/applications/vyr-dashboard.desktop")
    xprop -id "$(window_titled "VYR Dashboard - ")" WM_CLASS | grep -q ", \"$class\"$"
}

is_on_top() {
    [ $(($(xdotool getactivewindow))) -eq $(($(window_titled "$1"))) ]
}

# Chooses another frame rate in Settings, Camera.
choose_frame_rate() {
    local window
    xdotool key --clearmodifiers alt+s
    xdotool key Down Return
    wait_until "the settings dialog" window_titled "Settings" >/dev/null
    wait_until "the settings dialog on top" is_on_top "Settings"
    window=$(window_titled "Settings")
    xdotool mousemove --window "$window" 112 514 click --repeat 2 --delay 50 1
    xdotool key --clearmodifiers ctrl+a
    xdotool type "$1"
    capture "${2}-settings"
    xdotool key Tab Return
    wait_until "the settings dialog gone" no_window_titled "Settings"
}

# expect_frame_rate SYSTEM FOLDER RATE: in the settings file, in the place of whose program folder is FOLDER.
expect_frame_rate() {
    grep -q "Fps = $3.0;" "$work/$1$2/settings/DashboardSettings.cfg" ||
        fail "the frame rate in $1$2 is not $3: $(ls -l "$work/$1$2/settings"; cat "$work/$1$2"/settings/* || true)"
}

# --- what is tested --------------------------------------------------------------------------------------------------

# The paths of a system, but for what people and the package management keep for themselves.
list_files() {
    (cd "$work/$1" && find . -xdev \( -path ./tmp -o -path ./home -o -path ./var/log -o -path ./var/lib/apt \
        -o -path ./var/lib/dpkg -o -path ./var/cache -o -path ./root \) -prune -o -print | sort)
}

expect_shared_folder() {
    local rights
    rights=$(inside deb stat -c "%A %U %G" "$1/settings")
    [ "$rights" = "drwxrwsr-x root users" ] || fail "the rights of the settings folder: $rights"
}

install_program() {
    cp "$root"/build/packages/vyr-dashboard_*.deb "$work/deb/tmp/vyr-dashboard.deb"
    install_packages deb /tmp/vyr-dashboard.deb
    no_compiler deb
}

test_deb() {
    local folder=/usr/lib/vyr-dashboard
    make_system deb
    install_program
    inside deb dpkg --purge vyr-dashboard >>"$work/apt.log"
    list_files deb >"$work/before"
    install_program
    step "The Debian package is installed"
    expect_shared_folder $folder

    start deb anna vyr-dashboard
    capture deb-1-first-start
    belongs_to_desktop_entry || fail "the window has another class than the desktop entry says"
    as_user deb anna $folder/VYRDashboard || fail "a second start by another path did not find the first"
    step "Live frames; a second start finds the first"
    choose_frame_rate 25 deb-2
    close
    expect_frame_rate deb $folder 25
    start deb anna vyr-dashboard
    capture deb-3-second-start
    close
    expect_frame_rate deb $folder 25
    step "A choice is kept"

    start deb ben sh -c 'umask 077 && exec vyr-dashboard'
    choose_frame_rate 20 deb-4
    close
    expect_frame_rate deb $folder 20
    start deb anna vyr-dashboard
    choose_frame_rate 15 deb-5
    close
    expect_frame_rate deb $folder 15
    step "Two users keep their choices in one place"

    inside deb deluser --quiet ben users
    start deb ben vyr-dashboard
    choose_frame_rate 10 deb-6
    close
    expect_frame_rate deb $folder 15
    step "Who is not in the group users cannot, and can work all the same"

    inside deb dpkg --remove vyr-dashboard >>"$work/apt.log" 2>&1
    expect_frame_rate deb $folder 15
    install_program
    expect_shared_folder $folder
    expect_frame_rate deb $folder 15
    inside deb dpkg --purge vyr-dashboard >>"$work/apt.log" 2>&1
    list_files deb >"$work/after"
    diff "$work/before" "$work/after" || fail "this was left behind"
    step "Removing and installing again keeps the choices, purging leaves nothing"
    install_program
}

shows_the_example() {
    window_titled "VYR Dashboard - " >/dev/null && no_window_titled "VYR Dashboard - Stereo View"
}

# The example, built as its author would, with nothing but what the packages give.
test_development() {
    cp "$root"/build/packages/vyr-dashboard-dev_*.deb "$work/deb/tmp/vyr-dashboard-dev.deb"
    install_packages deb /tmp/vyr-dashboard-dev.deb cmake g++ make
    step "The development package and a compiler are installed"
    as_user deb anna cp -r /usr/share/doc/vyr-dashboard/examples/EdgeApp /home/anna/app
    as_user deb anna cmake -S /home/anna/app -B /home/anna/build -DCMAKE_BUILD_TYPE=Release >"$work/example.log"
    as_user deb anna cmake --build /home/anna/build >>"$work/example.log"
    inside deb cmake --install /home/anna/build >>"$work/example.log"
    # Purged choices: the first app in the order of names becomes current, and it comes before Stereo View.
    as_user deb anna vyr-dashboard 2>"$work/program.log" &
    program=$!
    wait_until "the example" shows_the_example
    wait_until "the status" shows_status
    capture deb-7-example
    close
    step "The example is built, and the program shows it"
}

test_folder() {
    local line folder=/home/ben/vyr
    make_system folder
    as_user folder ben mkdir "$folder"
    tar -xzf "$root"/build/packages/vyr-dashboard-*.tar.gz --strip-components=1 --no-same-owner -C "$work/folder$folder"
    chroot "$work/folder" chown -R ben: "$folder"
    line=$(sed -n 's/^ *sudo apt-get install //p' "$work/folder$folder/README.txt")
    [ -n "$line" ] || fail "README.txt does not say what to install"
    # shellcheck disable=SC2086 # the names are words
    install_packages folder $line
    no_compiler folder
    step "The folder is unpacked, and what its README.txt names is installed"
    start folder ben "$folder/bin/vyr-dashboard"
    capture folder-1-first-start
    choose_frame_rate 25 folder-2
    close
    expect_frame_rate folder "$folder/lib/vyr-dashboard" 25
    as_user folder ben mv "$folder" /home/ben/elsewhere
    start folder ben /home/ben/elsewhere/bin/vyr-dashboard
    capture folder-3-moved
    close
    expect_frame_rate folder /home/ben/elsewhere/lib/vyr-dashboard 25
    step "It runs, keeps a choice, and takes it along when it is moved"
}

: >"$work/apt.log"
rm -rf "$work/base"
openbox --config-file /etc/xdg/openbox/rc.xml >"$work/openbox.log" 2>&1 &
test_deb
test_folder
test_development
rm -rf "$work/base" "$work"/*.ppm
step "All is well; the pictures are in $work"
