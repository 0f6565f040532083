#!/bin/bash
# Runs a program on a Wayland compositor of its own and returns the program's exit code; 125 if the compositor
# did not come up. The compositor is a window of the X screen that DISPLAY names: one without any screen has no
# seat, so nobody there has the focus, which a clipboard belongs to.
#
#   on_display.sh openbox on_wayland.sh PROGRAM [ARGUMENTS]
set -u
[ $# -gt 0 ] || { sed -n '2,6s/^# \{0,1\}//p' "$0" >&2; exit 125; }
scratch=$(mktemp -d)
export XDG_RUNTIME_DIR=$scratch
chmod 700 "$scratch"
setpriv --pdeathsig TERM weston --backend=x11-backend.so --use-pixman --socket=compositor --no-config --idle-time=0 \
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
WAYLAND_DISPLAY=compositor QT_QPA_PLATFORM=wayland NO_AT_BRIDGE=1 "$@" &
program=$!
wait $program
