#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Takes the pictures of the documentation anew, from the program on the simulated camera: the window and the tabs of
# the settings dialog, in the light and in the dark skin.
#
#   docs/make-screenshots.sh [BUILD]     with the program of that build tree, or of build/release after building it
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
if [ $# -gt 0 ]; then
    build=$(cd "$1" && pwd)
else
    install_missing_packages
    build_targets program
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# skin_pictures SKIN DARK: runs a copy of the program, whose settings are its own, and leaves pictures in $work/SKIN.
skin_pictures() {
    local home="$work/$1"
    mkdir -p "$home"
    cp -a "$build/bin" "$home/bin"
    mkdir -p "$home/bin/settings"
    cat > "$home/bin/settings/DashboardSettings.cfg" <<END
AppConfig : {
    Application : { UseDarkSkin = $2; CurrentApp = "Stereo View"; };
    Vyr : { Width = 640; Height = 400; Binning = 0; Fps = 30.0; };
};
END
    env -u VYR_SOURCE HOME="$home" XDG_CONFIG_HOME="$home" TMPDIR="$home" LD_LIBRARY_PATH="$home/bin" \
        QT_PLUGIN_PATH="$build/tools" QT_QPA_PLATFORM=xcb QT_QPA_GENERIC_PLUGINS="vyrtour:$home" \
        xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" "$home/bin/VYRDashboard"
}

skin_pictures light false
skin_pictures dark true

mv "$work/light/window.png" "$root/docs/screenshot.png"
mv "$work/dark/window.png" "$root/docs/screenshot-dark.png"
for tab in apps camera devices; do
    for skin in light dark; do
        mv "$work/$skin/settings-$tab.png" "$root/docs/settings-$tab-$skin.png"
    done
done
