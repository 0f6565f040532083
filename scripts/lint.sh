#!/bin/bash
# clang-format and clang-tidy over the sources that differ from a branch (main by default), or over all of
# them: lint.sh all. Needs the packages clang-format and clang-tidy and a configured build/debug.
set -u
cd "$(dirname "$0")/.."
if [ "${1:-}" = all ]; then
    files=$(git ls-files '*.cpp' '*.h')
else
    files=$(git diff --name-only --diff-filter=d "${1:-main}" -- '*.cpp' '*.h')
fi
[ -n "$files" ] || exit 0
outcome=0
clang-format --dry-run --Werror $files || outcome=1
sources=$(grep '\.cpp$' <<<"$files")
[ -z "$sources" ] || xargs -P "$(nproc)" -n 1 clang-tidy -p build/debug --quiet <<<"$sources" || outcome=1
exit $outcome
