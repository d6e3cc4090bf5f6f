#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Takes all pictures of the documentation anew, from the program on the simulated camera, in the light and in the dark
# skin: NAME-light.png and NAME-dark.png in docs/manual/pictures. What an app shows of the camera looks the same in
# both skins and is taken once.
#
#   docs/make-screenshots.sh [BUILD]     with the program of that build tree, or of build/release after building it
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
packages+=(pngquant python3)
install_missing_packages
if [ $# -gt 0 ]; then
    build=$(cd "$1" && pwd)
else
    build_targets program
fi

pictures="$root/docs/manual/pictures"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# make_copy NAME DARK: a copy of the program in $work/NAME, whose settings are its own.
make_copy() {
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
}

# run_copy NAME SOURCE WAY: runs the copy on that source of pictures, with a way of tools/screenshot through it.
run_copy() {
    local home="$work/$1"
    # In English, whatever is spoken here.
    env -u LANGUAGE LC_ALL=C.UTF-8 HOME="$home" XDG_CONFIG_HOME="$home" TMPDIR="$home" \
        LD_LIBRARY_PATH="$home/bin" VYR_SOURCE="$2" \
        QT_PLUGIN_PATH="$build/tools" QT_QPA_PLATFORM=xcb QT_QPA_GENERIC_PLUGINS="$3" \
        timeout 300 xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" "$home/bin/VYRDashboard"
}

# skin_pictures SKIN DARK: leaves NAME.png in $work/SKIN.
skin_pictures() {
    make_copy "$1" "$2"
    run_copy "$1" "" "vyrtour:$work/$1"
    run_copy "$1" "playback:$work/recording" "vyrscreenshot:$work/$1/playback.png"
    run_copy "$1" none "vyrstill:$work/$1/no-camera.png"
    rm "$work/$1/bin/"*App.so
    run_copy "$1" "" "vyrstill:$work/$1/no-apps.png"
}

# add_picture FILE NAME: with as many colours as it takes, and half of the bytes.
add_picture() {
    pngquant --force --speed 1 --strip --output "$pictures/$2.png" 96 "$1"
}

"$root/docs/make_recording.py" "$work/recording"
skin_pictures light false
skin_pictures dark true

rm -rf "$pictures"
mkdir -p "$pictures"
for skin in light dark; do
    for file in "$work/$skin"/*.png; do
        name=$(basename "$file" .png)
        case $name in
            view-*) [ $skin = dark ] || add_picture "$file" "$name" ;;
            *) add_picture "$file" "$name-$skin" ;;
        esac
    done
done
du -sh "$pictures"
