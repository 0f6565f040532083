#!/bin/bash
# Takes the documents' pictures of the program anew, small enough to be kept: docs/screens, and the guide with
# its own. Pictures for the eye alone stay in build/pictures, at the scale and under the window
# manager that are named.
#
#   scripts/pictures.sh [openbox|xfwm4|metacity [SCALE]]
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
. scripts/packages.sh
need $build_packages $screen_packages $test_packages
manager=${1:-openbox}
scale=${2:-1}
bin=$root/build/release/bin
shots=$root/build/pictures/${manager}_${scale}x
stack=$bin/drivers/libcorvantine_simulated_stack.so

cmake --preset shipped >/dev/null
cmake --build --preset shipped --target corvantine corvantine_screens corvantine_simulated_stack
rm -rf "$shots"
mkdir -p "$shots"
CORVANTINE_DRIVER=$stack QT_SCALE_FACTOR=$scale SCREEN=$((1600 * scale))x$((900 * scale))x24 \
    tests/window/on_display.sh "$manager" "$bin/corvantine_screens" "$shots" ""
[ $# -eq 0 ] || exit 0

sheet() {
    local name=$1
    shift
    montage "$@" -background '#303030' -geometry "600x>+6+6" -tile 2x -strip -quality 72 "docs/screens/$name.jpg"
}
sheet skins "$shots"/skin_*.png
sheet panels "$shots"/panel_*.png
sheet windows "$shots"/{measurements,measurements_math,offset_null,splash,large_time,spectrum_*_dB}.png
convert "$shots/main.png" -dither None -colors 255 -strip docs/screens/main.png
scripts/guide.sh
