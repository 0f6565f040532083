#!/bin/bash
# The program looks for nothing in the folder that it happens to be started in: neither by a name without a
# folder nor by that folder's. Needs strace.
#
#   looks.sh PROGRAM
set -u
program=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/here/drivers" "$scratch/here/skins" "$scratch/config" "$scratch/run"
chmod 700 "$scratch/run"
: >"$scratch/here/libcorvantine_driver.so"
: >"$scratch/here/drivers/libcorvantine_simulated_stack.so"
: >"$scratch/here/qt.conf"
cd "$scratch/here" || exit 1

env -u CORVANTINE_DRIVER -u QT_PLUGIN_PATH -u LD_LIBRARY_PATH QT_QPA_PLATFORM=offscreen \
    XDG_CONFIG_HOME="$scratch/config" XDG_RUNTIME_DIR="$scratch/run" \
    strace -f -e trace=%file -o "$scratch/calls" "$program" 2>"$scratch/words" &
tracer=$!
for ((i = 0; i < 600; ++i)); do
    grep -q 'UsersGuide\|skins/' "$scratch/calls" 2>/dev/null && break
    sleep 0.1
done
sleep 2 # what comes after the start has no mark of its own
pkill -TERM -P $tracer
wait $tracer

calls=$(wc -l <"$scratch/calls")
[ "$calls" -gt 200 ] || { echo "looks.sh: only $calls calls seen" >&2; exit 1; }
# The first quoted word of a call is the path. A colon begins a name inside of the toolkit, which asks the
# system for one of them all the same.
found=$(grep -oE '\((AT_FDCWD, )?"[^"]*"' "$scratch/calls" | sed 's/^[^"]*"//; s/"$//' | sort -u |
    awk -v here="$scratch/here" '$0 != "" && $0 != ":/non-existent" && (substr($0, 1, 1) != "/" || index($0, here) == 1)')
if [ -n "$found" ]; then
    echo "looks.sh: it looks in the folder that it was started in:" >&2
    echo "$found" >&2
    exit 1
fi
echo "$calls calls, none for the folder that it was started in"
