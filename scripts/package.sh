#!/bin/bash
# Makes the Debian packages, from what git holds of this folder and in a bare Debian 12, into build/packages.
# For root; takes about ten minutes and 3 GB.
#
#   scripts/package.sh            makes the packages
#   scripts/package.sh --check    makes them, and looks at them: form, installation, start, removal
#   scripts/package.sh --here     makes them with what this machine has installed, and needs no root
#
#   SYSTEM=FOLDER   makes them in the bare system there, which is installed if it is not there, and stays
#   KEEP_SYSTEM=1   leaves the temporary folders with the systems
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/packages.sh"
packages=$root/build/packages
check=
here=
for argument in "$@"; do
    case $argument in
    --check) check=1 ;;
    --here) here=1 ;;
    *)
        sed -n '2,10s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
    esac
done

# What is packed: the last commit, with what has been changed since in files that git knows.
sources() {
    local tree
    tree=$(git -C "$root" stash create) || true # it fails where nothing has been changed
    mkdir -p "$1"
    git -C "$root" archive "${tree:-HEAD}" | tar -x -C "$1"
}
build="dpkg-buildpackage -us -uc"
mkdir -p "$packages"
rm -f "$packages"/corvantine*

if [ -n "$here" ]; then
    need git build-essential debhelper
    missing=$(cd "$root" && dpkg-checkbuilddeps 2>&1) || { echo "$missing"; exit 1; }
    place=$(mktemp -d)
    trap 'rm -rf "$place"' EXIT
    sources "$place/corvantine"
    (cd "$place/corvantine" && $build)
    mv "$place"/corvantine_* "$place"/corvantine-* "$packages"
    ls -l "$packages"
    exit
fi

. "$root/scripts/bare_system.sh"
need debootstrap git
if [ -n "${SYSTEM:-}" ]; then
    system=$SYSTEM
else
    temporary_system
fi
maker=$system
install_system "$maker"
if [ -n "$check" ]; then
    temporary_system
    user=$system
    cp -a "$maker/." "$user"
fi

enter_system "$maker"
sources "$maker/srv/build/corvantine"
tools="build-essential debhelper"
[ -z "$check" ] || tools="$tools appstream desktop-file-utils devscripts lintian man-db groff"
inside "$maker" "
    set -e
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends $tools >/dev/null
    cd /srv/build/corvantine
    apt-get build-dep -y -qq --no-install-recommends ./ >/dev/null
    $build"
cp "$maker"/srv/build/corvantine[_-]* "$packages"
ls -l "$packages"
[ -n "$check" ] || exit 0

inside "$maker" "cd /srv/build/corvantine && debian/tests/form /srv/build/corvantine_*.changes"
enter_system "$user"
mkdir "$user/srv/packages" "$user/srv/pictures"
cp "$packages"/*.deb "$user/srv/packages"
cp -R "$root/debian/tests" "$user/srv/tests"
inside "$user" "/srv/tests/life /srv/packages /srv/pictures"
mkdir -p "$packages/pictures"
cp "$user"/srv/pictures/*.png "$packages/pictures"
echo "Every check passed. Pictures: $packages/pictures"
