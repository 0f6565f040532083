#!/bin/bash
# The screen goes away, the window manager dies and another comes, the program is suspended, the clock jumps:
# each time the program ends, or goes on, properly and what was set is saved.
#
#   display.sh PROGRAM [SECONDS_SUSPENDED]
#
# The clock jumps only where faketime is installed; without it that trial is left out, and this says so.
set -u
program=$1
suspended=${2:-2}
scratch=$(mktemp -d)
export XDG_CONFIG_HOME=$scratch/config
export XDG_RUNTIME_DIR=$scratch
unset WAYLAND_DISPLAY QT_QPA_PLATFORM
settings=$XDG_CONFIG_HOME/Corvantine/Corvantine.ini
screen=
manager=
failures=0
finish() {
    { kill -KILL $screen $manager $(jobs -p); wait; } 2>/dev/null
    rm -rf "$scratch"
}
trap finish EXIT

fail() {
    echo "display.sh: $*" >&2
    failures=$((failures + 1))
}
# Waits until a command succeeds, not for ever.
until_true() {
    local i
    for ((i = 0; i < 600; ++i)); do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}
gone() { ! kill -0 "$1" 2>/dev/null; }
shows() { xwininfo -root -tree 2>/dev/null | grep -qF "\"$1\""; }
# The screen names the window of a manager that has died as well.
managed() {
    local named
    named=$(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -o '0x[0-9a-f]*') &&
        xprop -id "$named" _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 0x
}
unmanaged() { ! managed; }
setting() { sed -n "s/^$1=//p" "$settings" 2>/dev/null | head -1; }
changed() { [ -n "$(setting TimeBase)" ] && [ "$(setting TimeBase)" != "$usual" ]; }
end_of() {
    until_true gone "$1" || { kill -KILL "$1"; fail "$2: it did not end"; }
    wait "$1"
}
start_screen() {
    rm -f "$scratch/number"
    mkfifo "$scratch/number"
    bash -c 'exec Xvfb -displayfd 3 -screen 0 1280x800x24 -dpi 96 -nolisten tcp -noreset 3>"$1" 2>/dev/null' \
        Xvfb "$scratch/number" &
    screen=$!
    read -r -t 60 number <>"$scratch/number"
    export DISPLAY=:$number
}
start_manager() {
    openbox --sm-disable >/dev/null 2>/dev/null &
    manager=$!
    until_true managed || fail "no window manager came up"
}
start_program() {
    "$@" 2>"$scratch/words" &
    pid=$!
    until_true shows "Corvantine measurements" || fail "no window came"
}
# What stands above the time base knob, as a picture.
label() {
    import -silent -window "$window" -crop 62x14+456+65 rgb:- 2>/dev/null | md5sum
}
label_differs() { [ "$(label)" != "$before" ]; }
# One notch of the wheel on the time base knob, and what it shows then.
turn() {
    window=$(xdotool search --onlyvisible --name '^Corvantine$' | tail -1)
    before=$(label)
    xdotool mousemove --window "$window" 488 107 click 4
    until_true label_differs || fail "the knob does not turn"
}

start_screen
start_manager
start_program "$program"
kill -TERM $pid
end_of $pid "close" || fail "close: exit code $?"
usual=$(setting TimeBase)
[ -n "$usual" ] || fail "close: nothing was saved"

rm -rf "$XDG_CONFIG_HOME/Corvantine"
start_program "$program"
turn
kill -STOP $pid
sleep "$suspended" # being suspended has no condition to wait for
kill -CONT $pid
turn
kill -TERM $pid
end_of $pid "suspended" || fail "suspended: exit code $?"
changed || fail "suspended: what was set is not saved"

rm -rf "$XDG_CONFIG_HOME/Corvantine"
start_program "$program"
{ kill -KILL $manager; wait $manager; } 2>/dev/null
until_true unmanaged || fail "manager: it is still there" # its window goes with it
start_manager
shows "Corvantine measurements" || fail "manager: the window is gone"
turn
kill -TERM $pid
end_of $pid "manager" || fail "manager: exit code $?"
changed || fail "manager: what was set is not saved"
[ ! -s "$scratch/words" ] || fail "manager: it said $(cat "$scratch/words")"

clock=$(find /usr/lib -name libfaketime.so.1 2>/dev/null | head -1)
if [ -n "$clock" ]; then
    rm -rf "$XDG_CONFIG_HOME/Corvantine"
    echo "+0" >"$scratch/clock"
    start_program env LD_PRELOAD="$clock" FAKETIME_TIMESTAMP_FILE="$scratch/clock" FAKETIME_NO_CACHE=1 \
        DONT_FAKE_MONOTONIC=1 "$program"
    for jump in +3600 +0 -3600; do
        echo "$jump" >"$scratch/clock"
        turn
        sleep 0.5 # under that time; nothing tells that it was read
    done
    kill -TERM $pid
    end_of $pid "clock" || fail "clock: exit code $?"
    changed || fail "clock: what was set is not saved"
else
    echo "display.sh: no faketime, the clock did not jump"
fi

rm -rf "$XDG_CONFIG_HOME/Corvantine"
# With the session goes who reads what the program says of it.
mkfifo "$scratch/unread"
exec {unread}<>"$scratch/unread"
start_program bash -c 'unread=$3; exec 2>"$2"; exec {unread}<&-; exec "$1"' bash "$program" "$scratch/unread" $unread
exec {unread}<&-
turn
{ kill -KILL $screen; wait $screen; } 2>/dev/null
end_of $pid "screen"
code=$?
[ $code -lt 128 ] || fail "screen: it was ended by signal $((code - 128))"
changed || fail "screen: what was set is not saved"

exit $((failures > 0))
