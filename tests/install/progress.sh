#!/bin/bash
# What ./run says while it installs and builds.
#
#   progress.sh SOURCES
set -u
. "$1/scripts/progress.sh"
outcome=0
expect() {
    [ "$2" = "$3" ] && return
    printf '%s\nexpected:\n%s\nfound:\n%s\n' "$1" "$3" "$2"
    outcome=1
}

of_ninja() {
    for ((i = 1; i <= 40; ++i)); do echo "[$i/40] Building CXX object x$i.o"; done
}
expect "a build, quarter by quarter" "$(of_ninja | ninja_progress | show_progress built)" \
    $'   25 % built\n   50 % built\n   75 % built\n  100 % built'
expect "nothing to do" "$(echo 'ninja: no work to do.' | ninja_progress | show_progress built)" ""
expect "a warning is passed on" "$(echo 'x.cpp:1: warning: a [b]' | ninja_progress | show_progress built)" \
    'x.cpp:1: warning: a [b]'
expect "a failure is one" "$(echo failed | ninja_progress | show_progress built || echo so)" so
expect "apt's two halves" "$(printf 'dlstatus:1:50.5:Fetching\npmstatus:x:0.0:y\nSelecting x\npmstatus:x:100.0:Done\n' |
    apt_progress | show_progress installed)" $'   25 % installed\n   50 % installed\n  100 % installed'

# An apt and a dpkg of the test's own: nothing is installed. As the true one does, this apt closes for the
# packages' scripts what it tells its progress on.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
echo '#!/bin/sh' | tee "$scratch/dpkg-query" "$scratch/sudo" >"$scratch/apt-get"
echo 'exec "$@"' >>"$scratch/sudo"
cat >>"$scratch/apt-get" <<'END'
for word in "$@"; do
    case $word in
    APT::Status-Fd=*) status=${word#*=} ;;
    update) exit 0 ;;
    esac
done
echo "pmstatus:x:50.0:Configuring x" >&"$status"
eval "exec $status>&-"
printf "Regenerating x... " || exit 1
printf "a package's complaint\n" >&2 || exit 1
END
chmod +x "$scratch"/*
# The two streams are read apart: the progress goes through a pipe, a complaint does not, so either may be first.
expect "what is told beside a package's own words" \
    "$( (PATH=$scratch:$PATH; . "$1/scripts/packages.sh"; need x 2>"$scratch/errors" || echo failed) | sed 's/ in [0-9]* s$//')" \
    $'Installing x\n   75 % installed\n  installed'
expect "packages may complain" "$(cat "$scratch/errors")" "a package's complaint"
exit $outcome
