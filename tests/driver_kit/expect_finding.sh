#!/bin/bash
# expect_finding.sh CHECK LIBRARY SECTION FAULT RULE: the check of a driver with that fault has to end with
# status 1 and to name the broken rule.
set -u
check=$1 library=$2 section=$3 fault=$4 rule=$5
only=()
[ "$section" = all ] || only=(--only "$section")
report=$(CORVANTINE_FAULT=$fault "$check" "${only[@]}" --patience 3 "$library")
status=$?
found=$(grep -F "$rule; found: " <<<"$report" | grep '^not ok [0-9]* - ')
if [ "$status" -ne 1 ] || [ -z "$found" ]; then
    printf '%s\n' "$report"
    echo "status $status; \"$rule\" was not found broken"
    exit 1
fi
printf '%s\n' "$found"
