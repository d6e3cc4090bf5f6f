#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs what is missing, builds the program and starts it.
#
#   ./run.sh                         on the simulated camera
#   ./run.sh playback:FOLDER         on recorded pictures: FOLDER/left and FOLDER/right
#   ./run.sh playback:FILE           on a side-by-side video
#   ./run.sh none                    without a camera
#
# Without a display the program starts on a virtual one; when live frames are on the screen, a picture of it goes to
# build/screenshot.png, the status text is printed, and the program ends.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$root/packaging/prepare.sh"

[ $# -le 1 ] || { echo "usage: $0 [SOURCE]" >&2; exit 2; }
[ $# -eq 0 ] || export VYR_SOURCE=$1

install_missing_packages
build_targets program

if [ -n "${DISPLAY:-}" ]; then # on Wayland desktops, that of their X server
    exec "$build/bin/VYRDashboard"
fi

screenshot="$root/build/screenshot.png"
rm -f "$screenshot"
echo "There is no display: starting on a virtual one."
export QT_PLUGIN_PATH="$build/tools" QT_QPA_PLATFORM=xcb
# A folder for what xvfb-run leaves when it is ended. The program keeps the usual one, where it looks for a running one.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The observer gives up by itself after a minute; the limit is for a display or a program that does not even start.
status=0
QT_QPA_GENERIC_PLUGINS="vyrscreenshot:$screenshot" TMPDIR="$work" timeout 120 \
    xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" \
    env TMPDIR="${TMPDIR:-/tmp}" "$build/bin/VYRDashboard" || status=$?
[ $status -ne 124 ] || echo "The program did not show a picture in time." >&2
[ $status -eq 0 ] || exit $status
[ -f "$screenshot" ] || { echo "No screenshot was taken. Is the program running already?" >&2; exit 1; }
echo "Screenshot: $screenshot"
