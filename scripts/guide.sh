#!/bin/bash
# Makes the user's guide, UsersGuide/Corvantineug.pdf, from docs/guide/ and from pictures that the program takes
# of itself, and checks it. It takes about two minutes and wants one package that nothing else needs and that no
# other script installs: weasyprint (Debian), since the toolkit's own printing makes neither links nor bookmarks.
#
#   scripts/guide.sh              everything
#   scripts/guide.sh --text       the pictures of the last time, for work on the text
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
command -v weasyprint >/dev/null || { echo "guide.sh: apt-get install weasyprint" >&2; exit 1; }
. scripts/packages.sh
need $build_packages $screen_packages $test_packages
bin=$root/build/release/bin
shots=$root/build/guide/shots
pictures=$root/build/guide/pictures
guide=UsersGuide/Corvantineug.pdf

take() {
    QT_SCALE_FACTOR=2 SCREEN=3200x1800x24 CORVANTINE_DRIVER=$bin/drivers/libcorvantine_simulated_stack.so LC_ALL=C.UTF-8 \
        tests/window/on_display.sh openbox "$bin/guide_pictures" "$shots" "$1"
}

# Few colours, and no grain: that is what makes a picture small in the PDF.
shrink() {
    local shot=$1 colours=$2
    convert "$shot" -dither None -colors "$colours" -fuzz 3% -fill white -opaque white -strip "$pictures/$(basename "$shot")"
}

if [ "${1:-}" != --text ]; then
    cmake --preset shipped >/dev/null
    cmake --build --preset shipped --target corvantine guide_pictures corvantine_simulated_stack
    rm -rf "$shots" "$pictures"
    mkdir -p "$shots" "$pictures"
    take fast
    CORVANTINE_STACK=$root/docs/guide/slow.stack take slow
    for shot in "$shots"/*.png; do
        case $(basename "$shot") in
        face.png) shrink "$shot" 64 ;;
        skin_*) convert "$shot" -resize 45% -quality 80 -strip "$pictures/$(basename "$shot" .png).jpg" ;;
        *) shrink "$shot" 32 ;;
        esac
    done
    cp -r "$shots"/*.json "$shots/saved" "$pictures"
fi
python3 scripts/guide.py "$pictures" "$guide"
python3 tests/guide/check_pdf.py "$guide" docs/guide/guide.html
