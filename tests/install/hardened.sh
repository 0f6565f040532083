#!/bin/bash
# Whether programs and libraries are hardened as a release has to be.
#
#   hardened.sh FILE...
set -u
outcome=0
fault() {
    echo "$file: $*"
    outcome=1
}
for file in "$@"; do
    header=$(readelf -hW "$file") && dynamic=$(readelf -dW "$file") && segments=$(readelf -lW "$file") &&
        symbols=$(readelf --dyn-syms -W "$file") || exit 2
    grep -q 'Type: *DYN' <<<"$header" || fault "always at the same place in memory"
    if [[ $segments == *INTERP* ]]; then
        grep -q 'FLAGS_1.*PIE' <<<"$dynamic" || fault "no position independent executable"
    fi
    grep -q GNU_RELRO <<<"$segments" || fault "tables that stay writable"
    grep -Eq 'BIND_NOW|FLAGS_1.* NOW' <<<"$dynamic" || fault "symbols that are looked up late"
    grep -q 'GNU_STACK.* RW ' <<<"$segments" || fault "a stack that can be executed"
    grep -Eq 'RPATH|RUNPATH' <<<"$dynamic" && fault "libraries are looked for at a place of their own"
    grep -q __stack_chk_fail <<<"$symbols" || fault "no guarded returns"
    if grep -Eq ' (fprintf|memcpy|snprintf|read|strncpy|vsnprintf)@' <<<"$symbols"; then
        grep -Eq '_chk@' <<<"$symbols" || fault "calls that do not know the size of their buffers"
    fi
    if grep -q 'Machine:.*X86-64' <<<"$header"; then
        # The note that says so cannot be there: Debian's start files lack it.
        [ "$(objdump -d "$file" | grep -c endbr64)" -gt 40 ] || fault "jumps that are not guarded"
    fi
done
exit $outcome
