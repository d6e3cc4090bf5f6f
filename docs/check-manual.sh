#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Opens the manual as a user does: starts the program, chooses Documentation in its menu Help, and has Chromium read
# what the program hands over to the desktop, page by page. Fails when a page or a picture does not load.
#
#   docs/check-manual.sh [BUILD]     with the program of that build tree, or of build/release after building it
#
# Pictures of all pages, light and dark, are left in build/manual-pages.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$root/packaging/prepare.sh"
packages+=(chromium python3)
install_missing_packages
if [ $# -gt 0 ]; then
    build=$(cd "$1" && pwd)
else
    build_targets program
fi

work=$(mktemp -d)

# Ends the reading, with its browser, if it goes on still; neither may work in the folder any more that is removed.
clean_up() {
    if [ -s "$work/walker" ] && [ ! -s "$work/status" ]; then
        local group
        group=$(cat "$work/walker")
        kill -- "-$group" 2>/dev/null || true
        for ((tenth = 0; tenth < 50; tenth++)); do
            kill -0 -- "-$group" 2>/dev/null || break
            sleep 0.1
        done
        kill -KILL -- "-$group" 2>/dev/null || true
    fi
    rm -rf "$work"
}
trap clean_up EXIT
cp -a "$build/bin" "$work/bin"

# The desktop's part: opens the address that it is given, and notes how that went.
mkdir "$work/desktop"
cat > "$work/desktop/xdg-open" <<END
#!/usr/bin/env bash
set -m # a process group of its own for what goes on behind
{
    echo "The program opens \$1"
    "$root/docs/walk_manual.py" "\$1" "$root/build/manual-pages"
    echo \$? > "$work/status"
} > "$work/log" 2>&1 &
echo \$! > "$work/walker"
END
chmod +x "$work/desktop/xdg-open"

rm -rf "$root/build/manual-pages"
# In English, and with nothing of the desktop that this may be started from, which would have its own browser opened.
env -u LANGUAGE -u BROWSER -u DEFAULT_BROWSER -u XDG_CURRENT_DESKTOP PATH="$work/desktop:$PATH" \
    HOME="$work" XDG_CONFIG_HOME="$work" TMPDIR="$work" LD_LIBRARY_PATH="$work/bin" LC_ALL=C.UTF-8 VYR_SOURCE=none \
    QT_PLUGIN_PATH="$build/tools" QT_QPA_PLATFORM=xcb QT_QPA_GENERIC_PLUGINS=vyrdocumentation \
    timeout 120 xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" "$work/bin/VYRDashboard"

# The program has ended, the browser may be reading still.
for ((second = 0; second < 300; second++)); do
    [ ! -s "$work/status" ] || break
    sleep 1
done
cat "$work/log" || { echo "The program opened nothing." >&2; exit 1; }
[ -s "$work/status" ] || { echo "The browser did not come to an end." >&2; exit 1; }
echo "Pictures of the pages: $root/build/manual-pages"
exit "$(cat "$work/status")"
