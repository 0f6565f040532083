#!/bin/bash
# Tries the README's two commands where nothing is installed: a fresh clone in a bare Debian 12, which knows
# only what the scripts install. For root; takes about a quarter of an hour and 4 GB.
#
#   scripts/bare.sh [FOLDER]    the system is made in FOLDER, or in a temporary one that is removed at the end
#
#   KEEP_SYSTEM=1   leaves the temporary folder
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/bare_system.sh"
need debootstrap git

system=${1:-}
[ -n "$system" ] || temporary_system
install_system "$system"
enter_system "$system"
rm -rf "$system/srv/corvantine"
git clone --quiet --no-hardlinks "$root" "$system/srv/corvantine"

outcome=0
for command in ./run ./test; do
    TIMEFORMAT="bare: $command took %R s, %U s of the processors in programs and %S s in the system"
    result=passed
    time inside "$system" "cd /srv/corvantine && $command" || result=FAILED
    echo "bare: $command $result"
    [ $result = passed ] || outcome=1
done
exit $outcome
