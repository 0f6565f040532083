#!/bin/bash
# no_case.sh PROGRAM: the test program fails if its filter fits none of its cases, and says so.
report=$("$1" --gtest_filter=Nothing.Fits 2>&1)
[ $? -eq 1 ] && grep -q '^No case was run' <<<"$report" && exit
echo "$report"
exit 1
