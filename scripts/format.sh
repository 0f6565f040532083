#!/bin/bash
# Puts the sources into the project's format, or with --check names what is not in it and fails.
set -eu
cd "$(dirname "$0")/.."
. scripts/packages.sh
need clang-format git
how=(-i)
[ "${1:-}" != --check ] || how=(--dry-run -Werror)
git ls-files -z '*.cpp' '*.h' '*.c' | xargs -0 -r clang-format "${how[@]}"
