#!/bin/bash
# The version stands in the project's CMakeLists.txt; whoever else has to tell it tells the same.
#
#   versions.sh SOURCES VERSION
set -u
cd "$1" || exit 2
version=$2
outcome=0
tells() {
    [ "$2" = "$version" ] && return
    echo "$1 says $2, the project $version"
    outcome=1
}
tells CHANGELOG.md "$(sed -n 's/^## \([^ ]*\) .*/\1/p' CHANGELOG.md | head -n 1)"
tells debian/changelog "$(sed -n '1s/^corvantine (\([^)]*\)).*/\1/p' debian/changelog)"
tells packaging/corvantine.metainfo.xml \
    "$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' packaging/corvantine.metainfo.xml | head -n 1)"

# And the days of the release are one.
day=$(sed -n 's/^## [^ ]* (\(.*\))$/\1/p' CHANGELOG.md | head -n 1)
[ "$(sed -n 's/.*<release version="[^"]*" date="\([^"]*\)".*/\1/p' packaging/corvantine.metainfo.xml | head -n 1)" = "$day" ] ||
    { echo "another day of the release in packaging/corvantine.metainfo.xml"; outcome=1; }
[ "$(date -u -d "$(sed -n 's/^ -- .*>  //p' debian/changelog | head -n 1)" +%F)" = "$day" ] ||
    { echo "another day of the release in debian/changelog"; outcome=1; }
exit $outcome
