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
need debootstrap git

system=${1:-}
if [ -z "$system" ]; then
    system=$(mktemp -d "${TMPDIR:-/var/tmp}/corvantine-bare.XXXXXX")
    [ -n "${KEEP_SYSTEM:-}" ] || temporary=$system
fi
mounted=()
finish() {
    for ((i = ${#mounted[@]} - 1; i >= 0; --i)); do
        umount -l "${mounted[i]}" || return
    done
    [ -z "${temporary:-}" ] || rm -rf --one-file-system "$temporary"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP

# The same mirror that this machine takes its packages from.
site=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Codename: bookworm' | head -n 1)
[ -x "$system/bin/bash" ] || debootstrap --variant=minbase bookworm "$system" "$site"
for place in proc sys dev dev/pts dev/shm; do
    mount --bind "/$place" "$system/$place"
    mounted+=("$system/$place")
done
cp /etc/resolv.conf "$system/etc/resolv.conf"

rm -rf "$system/srv/corvantine"
git clone --quiet --no-hardlinks "$root" "$system/srv/corvantine"

inside() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root TERM=dumb chroot "$system" /bin/bash -c "cd /srv/corvantine && $1"
}
outcome=0
for command in ./run ./test; do
    TIMEFORMAT="bare: $command took %R s, %U s of the processors in programs and %S s in the system"
    result=passed
    time inside "$command" || result=FAILED
    echo "bare: $command $result"
    [ $result = passed ] || outcome=1
done
exit $outcome
