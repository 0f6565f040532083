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
    begin=$SECONDS
    if inside "$system" "cd /srv/corvantine && $command"; then
        echo "bare: $command passed after $((SECONDS - begin)) s"
    else
        echo "bare: $command FAILED after $((SECONDS - begin)) s"
        outcome=1
    fi
done
exit $outcome
