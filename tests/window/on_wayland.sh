#!/bin/bash
# Runs a program on a Wayland compositor without a screen and returns the program's exit code; 125 if the
# compositor did not come up.
#
#   on_wayland.sh PROGRAM [ARGUMENTS]
set -u
[ $# -gt 0 ] || { sed -n '2,5s/^# \{0,1\}//p' "$0" >&2; exit 125; }
scratch=$(mktemp -d)
export XDG_RUNTIME_DIR=$scratch
chmod 700 "$scratch"
setpriv --pdeathsig TERM weston --backend=headless-backend.so --socket=compositor --no-config --idle-time=0 \
    --width=1280 --height=800 >"$scratch/log" 2>&1 &
compositor=$!
program=
finish() {
    [ -z "$program" ] || kill "$program" 2>/dev/null
    kill $compositor 2>/dev/null
    wait
    rm -rf "$scratch"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP
for ((i = 0; ; ++i)); do
    [ -S "$scratch/compositor" ] && break
    if [ $i -ge 600 ] || ! kill -0 $compositor 2>/dev/null; then
        echo "on_wayland.sh: the compositor did not come up" >&2
        cat "$scratch/log" >&2
        exit 125
    fi
    sleep 0.05
done
unset DISPLAY
WAYLAND_DISPLAY=compositor QT_QPA_PLATFORM=wayland NO_AT_BRIDGE=1 "$@" &
program=$!
wait $program
