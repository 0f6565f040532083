#!/bin/sh
# What a user's own surroundings say of language, time, scale, fonts and look must reach no test: tells it to
# ctest, in a project of nothing but the presets, and looks at what a test then finds.
set -eu
root=$1
project=$(mktemp -d)
trap 'rm -rf "$project"' EXIT
cp "$root/CMakePresets.json" "$project"
cat >"$project/CMakeLists.txt" <<'EOF'
cmake_minimum_required(VERSION 3.25)
project(environment NONE)
enable_testing()
add_test(NAME told COMMAND ${CMAKE_COMMAND} -E environment)
EOF
cd "$project"
unset CTEST_PARALLEL_LEVEL
outcome=0
for preset in debug asan shipped; do
    cmake --preset $preset >configured 2>&1 || { cat configured; exit 1; }
    env LC_ALL=users LANGUAGE=users TZ=users FONTCONFIG_FILE=users QT_SCALE_FACTOR=users \
        QT_SCREEN_SCALE_FACTORS=users QT_FONT_DPI=users QT_USE_PHYSICAL_DPI=users QT_STYLE_OVERRIDE=users \
        QT_QPA_PLATFORMTHEME=users XDG_CURRENT_DESKTOP=users CORVANTINE_DRIVER=users CORVANTINE_STACK=users \
        ctest --preset $preset --verbose >told
    grep -q 'LC_ALL=C.UTF-8$' told || { cat told; exit 1; } # that the test told anything at all
    if grep '=users$' told; then
        echo "reaches the tests of $preset"
        outcome=1
    fi
done
exit $outcome
