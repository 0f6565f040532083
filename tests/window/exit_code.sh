#!/bin/bash
# The exit codes of on_display.sh.
cd "$(dirname "$0")" || exit 1
expect() {
    local wanted=$1
    shift
    ./on_display.sh "$@" >/dev/null 2>&1
    local got=$?
    [ $got -eq "$wanted" ] || { echo "$*: $got instead of $wanted"; exit 1; }
}
expect 0 openbox true
expect 7 openbox bash -c 'exit 7'
expect 125 nosuchmanager true
expect 125 openbox
