#!/bin/bash
# The program ends and saves however it is told to, on the screen that this is run on.
#
#   ends.sh PROGRAM SESSION_MANAGER STACK_LIBRARY STACK_FILE
set -u
program=$1
session_manager=$2
stack_library=$3
stack_file=$4
settings=$XDG_CONFIG_HOME/Corvantine/Corvantine.ini
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

fail() {
    echo "ends.sh: $*" >&2
    failures=$((failures + 1))
}
shows() {
    xwininfo -root -tree 2>/dev/null | grep -qF "\"$1\""
}
# Waits for a window of that title; the program may have ended instead.
wait_for() {
    local i
    for ((i = 0; i < 600; ++i)); do
        shows "$1" && return 0
        kill -0 "$2" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}
# Waits until a process that this shell started has ended, not for ever: its exit code.
end_of() {
    local i
    for ((i = 0; i < 300; ++i)); do
        kill -0 "$1" 2>/dev/null || break
        sleep 0.1
    done
    kill -KILL "$1" 2>/dev/null
    wait "$1"
}
# The settings that a close leaves: the panel's own, and the last tab's.
saved() {
    grep -q '^TimeBase=' "$settings" 2>/dev/null && grep -q '^MainWindowLeft=' "$settings"
}

for signal in TERM INT HUP; do
    rm -rf "$XDG_CONFIG_HOME/Corvantine"
    # A shell starts what runs in its background deaf to SIGINT; env undoes that.
    env --default-signal="$signal" "$program" 2>"$scratch/words" &
    pid=$!
    wait_for "Corvantine measurements" $pid || fail "SIG$signal: no window came"
    kill -s "$signal" $pid
    end_of $pid
    code=$?
    [ $code -eq 0 ] || fail "SIG$signal: exit code $code"
    saved || fail "SIG$signal: nothing was saved"
    [ ! -s "$scratch/words" ] || fail "SIG$signal: it said $(cat "$scratch/words")"
done

# In the middle of the start-up, wherever that is by then, the settings stay as they are.
cp "$settings" "$scratch/before"
for pause in 0.05 0.1 0.2 0.3 0.5; do
    "$program" 2>"$scratch/words" &
    pid=$!
    sleep "$pause" # no condition to wait for: any moment will do
    kill -TERM $pid
    end_of $pid
    code=$?
    # 143: it was not yet far enough to hear of it
    [ $code -eq 0 ] || [ $code -eq 143 ] || fail "after $pause s: exit code $code"
    cmp -s "$scratch/before" "$settings" || fail "after $pause s: the settings have changed"
done

# A nohup is respected.
(trap '' HUP; exec "$program" 2>/dev/null) &
pid=$!
wait_for "Corvantine measurements" $pid || fail "nohup: no window came"
kill -HUP $pid
sleep 1 # that nothing comes of it has no condition
kill -0 $pid 2>/dev/null || fail "nohup: it ended"
kill -TERM $pid
end_of $pid || fail "nohup: exit code $?"

rm -rf "$XDG_CONFIG_HOME/Corvantine"
"$session_manager" "$settings" "Corvantine measurements" "$program" || fail "session: exit code $?"
saved || fail "session: nothing was saved"

# Twice by mistake: both run, neither has anything to say.
"$program" 2>"$scratch/one" &
one=$!
wait_for "Corvantine measurements" $one || fail "twice: the first did not come"
"$program" 2>"$scratch/two" &
two=$!
for ((i = 0; i < 600; ++i)); do
    [ "$(xwininfo -root -tree | grep -cF '"Corvantine measurements"')" -eq 2 ] && break
    sleep 0.1
done
[ "$(xwininfo -root -tree | grep -cF '"Corvantine measurements"')" -eq 2 ] || fail "twice: the second did not come"
kill -TERM $one $two
end_of $one || fail "twice: exit code $?"
end_of $two || fail "twice: exit code $?"
[ ! -s "$scratch/one" ] && [ ! -s "$scratch/two" ] || fail "twice: $(cat "$scratch/one" "$scratch/two")"
saved || fail "twice: nothing was saved"

# Two that were each given a module are told apart by their titles.
export CORVANTINE_DRIVER=$stack_library CORVANTINE_STACK=$stack_file
"$program" /MIS3:1 2>"$scratch/one" &
one=$!
"$program" /MIS4:2 2>"$scratch/two" &
two=$!
for title in "Corvantine_3:1" "Corvantine_3:1 measurements"; do
    wait_for "$title" $one || fail "forced: no window $title"
done
for title in "Corvantine_4:2" "Corvantine_4:2 measurements"; do
    wait_for "$title" $two || fail "forced: no window $title"
done
shows "Corvantine measurements" && fail "forced: a window without a module's name"
kill -TERM $one $two
end_of $one || fail "forced: exit code $?"
end_of $two || fail "forced: exit code $?"
[ ! -s "$scratch/one" ] && [ ! -s "$scratch/two" ] || fail "forced: $(cat "$scratch/one" "$scratch/two")"

exit $((failures > 0))
