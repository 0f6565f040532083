#!/bin/bash
# Starts a program on the present screen, gives it a few seconds, photographs the screen and ends it.
#
#   shoot.sh PICTURE SECONDS PROGRAM [ARGUMENTS]
set -u
picture=$1
seconds=$2
shift 2

"$@" &
program=$!
for ((i = 0; i < 600; ++i)); do
    kill -0 $program 2>/dev/null || break
    xprop -root _NET_CLIENT_LIST 2>/dev/null | grep -q 0x && break
    sleep 0.1
done
sleep "$seconds"
if ! kill -0 $program 2>/dev/null; then
    wait $program
    echo "The program ended by itself with exit code $?" >&2
    exit 1
fi
import -window root "$picture" || exit 1
kill $program
wait $program 2>/dev/null
exit 0
