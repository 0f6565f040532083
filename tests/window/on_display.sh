#!/bin/bash
# Runs a program on a screen of its own under a window manager and returns the program's exit code.
#
#   on_display.sh openbox|xfwm4|metacity|weston PROGRAM [ARGUMENTS]
#
#   SCREEN=1920x1080x24   size and depth of the screen
#   MONITORS=1,2          the screen is two monitors side by side, of these scales
#   KEEP_CONFIG=1         the program sees the user's settings, not an empty folder
#
# Exit code 125: no screen or no window manager came up, the program was not started.
set -u

if [ $# -lt 2 ]; then
    sed -n '2,10s/^# \{0,1\}//p' "$0" >&2
    exit 125
fi

if [ -z "${ON_DISPLAY_BUS:-}" ]; then
    # xfwm4 and metacity keep their settings behind a session bus; this one ends with the script, and what
    # it has to say is nobody's concern.
    command -v dbus-run-session >/dev/null || { echo "on_display.sh: no dbus-run-session" >&2; exit 125; }
    exec env ON_DISPLAY_BUS=1 dbus-run-session -- "$0" "$@" 3>&2 2>/dev/null
fi
exec 2>&3 3>&-
unset ON_DISPLAY_BUS

manager=$1
shift
scratch=$(mktemp -d)
pids=()
finish() {
    for ((i = ${#pids[@]} - 1; i >= 0; --i)); do
        kill "${pids[i]}" 2>/dev/null
        wait "${pids[i]}" 2>/dev/null
    done
    rm -rf "$scratch"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP
fail() {
    echo "on_display.sh: $*" >&2
    cat "$scratch"/*.log >&2
    exit 125
}

# Whatever is started here ends with this shell, even if nobody lets it run its trap.
start() {
    local log=$1
    shift
    setpriv --pdeathsig TERM "$@" >"$scratch/$log.log" 2>&1 &
    pids+=($!)
}

# Starts an X server that tells its number by its file descriptor 3, and waits for it.
serve() {
    local name=$1
    shift
    rm -f "$scratch/number"
    mkfifo "$scratch/number"
    start "$name" bash -c 'exec "${@:2}" -displayfd 3 -dpi 96 -nolisten tcp -noreset 3>"$1"' \
        "$name" "$scratch/number" "$@"
    number=
    read -r -t 60 number <>"$scratch/number"
    [ -n "$number" ] || fail "$name did not come up"
    export DISPLAY=:$number
}

mkdir -p "$scratch/config" "$scratch/cache"
mkdir -m 700 "$scratch/run"
unset WAYLAND_DISPLAY
serve screen Xvfb -screen 0 "${SCREEN:-1920x1080x24}"

if [ -n "${MONITORS:-}" ]; then
    # A virtual screen has one output. A second monitor that is only a part of it is none for xfwm4, whose
    # toolkit passes over monitors without an output of their own. So a compositor provides two outputs, in
    # windows that nobody looks at, and an X server on it makes them into one screen.
    IFS=x read -r width height _ <<<"${SCREEN:-1920x1080x24}"
    start outputs env XDG_RUNTIME_DIR="$scratch/run" weston --backend=x11-backend.so --use-pixman --no-config \
        --idle-time=0 --width=$((width / 2)) --height="$height" --output-count=2 --socket=outputs
    for ((i = 0; ; ++i)); do
        [ -S "$scratch/run/outputs" ] && break
        [ $i -lt 600 ] && kill -0 "${pids[-1]}" 2>/dev/null || fail "no compositor for two monitors"
        sleep 0.05
    done
    serve monitors env WAYLAND_DISPLAY="$scratch/run/outputs" Xwayland -shm
    for ((i = 0; ; ++i)); do
        [ "$(xrandr --listmonitors | grep -c "$((width / 2))/.*x$height/")" = 2 ] && break
        [ $i -lt 600 ] || fail "there are not two monitors: $(xrandr --listmonitors)"
        sleep 0.05
    done
    xrandr --output XWAYLAND0 --primary || fail "no primary monitor"
    export QT_SCREEN_SCALE_FACTORS="XWAYLAND0=${MONITORS%,*};XWAYLAND1=${MONITORS#*,}"
fi
export QT_QPA_PLATFORM=xcb NO_AT_BRIDGE=1 LIBGL_ALWAYS_SOFTWARE=1

if [ "$manager" = weston ]; then
    export XDG_RUNTIME_DIR=$scratch/run # for a socket of its own
else
    export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$scratch/run}"
fi
managed=(env XDG_CONFIG_HOME="$scratch/config" XDG_CACHE_HOME="$scratch/cache" GSETTINGS_BACKEND=memory)
case $manager in
openbox) start manager "${managed[@]}" openbox --sm-disable ;;
xfwm4) start manager "${managed[@]}" xfwm4 --compositor=off --vblank=off ;;
metacity) start manager "${managed[@]}" metacity --no-composite --sm-disable ;;
weston)
    # The compositor in a window of the screen, so that a pointer and a camera reach it. It leaves a rim of
    # the screen free: only a pointer that comes in from there is where the compositor thinks it is.
    IFS=x read -r width height _ <<<"${SCREEN:-1920x1080x24}"
    start manager "${managed[@]}" weston --backend=x11-backend.so --use-pixman --no-config --idle-time=0 \
        --width=$((width - 40)) --height=$((height - 40)) --socket=compositor
    export QT_QPA_PLATFORM=wayland WAYLAND_DISPLAY=compositor
    ;;
*) fail "no such window manager: $manager" ;;
esac
for ((i = 0; ; ++i)); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    [ $manager = weston ] && [ -S "$XDG_RUNTIME_DIR/compositor" ] && break
    kill -0 "${pids[-1]}" 2>/dev/null || fail "$manager ended"
    [ $i -lt 600 ] || fail "$manager did not take the screen"
    sleep 0.05
done
if [ $manager != weston ]; then
    # A manager tells that it holds the screen before it looks for the windows there, and may never give the focus
    # to one that comes in between. It answers a request only when it has begun; none begins with three desktops.
    for ((i = 0; ; ++i)); do
        xdotool set_num_desktops 3 2>/dev/null
        [ "$(xdotool get_num_desktops 2>/dev/null)" = 3 ] && break
        [ $i -lt 600 ] || fail "$manager answers no request"
        sleep 0.05
    done
fi

[ -n "${KEEP_CONFIG:-}" ] || export XDG_CONFIG_HOME=$scratch/config
"$@" &
program=$!
pids+=($program)
wait $program
