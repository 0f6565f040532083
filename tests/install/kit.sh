#!/bin/bash
# Installs the kit for authors of drivers, moves it, and builds the skeleton from it in both ways that it offers.
#
#   kit.sh CMAKE BUILD VERSION
set -eu
cmake=$1
build=$2
version=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

env -u DESTDIR "$cmake" --install "$build" --prefix "$scratch/first" --component kit >/dev/null
prefix=$scratch/prefix
mv "$scratch/first" "$prefix"
[ -s "$prefix/share/doc/Corvantine/examples/stacks/four_modules.stack" ]
[ -s "$prefix/lib/corvantine/drivers/libcorvantine_simulated_stack.so" ]

cp -R "$prefix/share/doc/Corvantine/examples/skeleton" "$scratch/mine"
cd "$scratch/mine"
export PKG_CONFIG_PATH=$prefix/share/pkgconfig
[ "$(pkg-config --modversion corvantine-driver)" = "$version" ]
[ "$(realpath "$(pkg-config --variable=driverdir corvantine-driver)")" = "$prefix/lib/corvantine/drivers" ]
cc -O2 -shared -fPIC $(pkg-config --cflags corvantine-driver) skeleton.c arithmetic.c -o libmine.so -lm

cat >CMakeLists.txt <<END
cmake_minimum_required(VERSION 3.25)
project(mine LANGUAGES C)
find_package(Corvantine ${version%.*} REQUIRED)
add_library(mine MODULE skeleton.c arithmetic.c)
target_link_libraries(mine PRIVATE Corvantine::driver m)
if(NOT EXISTS \${Corvantine_DRIVER_DIR}/libcorvantine_simulated_stack.so)
  message(FATAL_ERROR "no driver in \${Corvantine_DRIVER_DIR}")
endif()
END
"$cmake" -S . -B build -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
"$cmake" --build build >/dev/null

check=$prefix/bin/corvantine_driver_check
if [ -x "$check" ]; then
    [ -s "$prefix/share/man/man1/corvantine_driver_check.1" ]
    for library in libmine.so build/libmine.so; do
        "$check" --only names "$library"
    done
fi
