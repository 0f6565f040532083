#!/bin/bash
# Tries to break the program, each trial as long as it takes to believe it; ./test runs the short forms.
# What each trial says stays in build/endurance.
#
#   scripts/endure.sh [HOURS [TRIAL ...]]
#
# HOURS, 1 unless told, is how long the soaks run; the trials are those below, all unless some are named.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root" || exit 1
. scripts/packages.sh
need $build_packages $screen_packages $test_packages $endurance_packages || exit 1
hours=${1:-1}
shift $(($# > 0 ? 1 : 0))
trials=${*:-soak monkey drivers restarts counters texts saves damaged fuzz display looks hardening}
seconds=$(awk -v hours="$hours" 'BEGIN { printf "%d", hours * 3600 }')
results=$root/build/endurance
shipped=$root/build/release/bin
sanitized=$root/build/asan/bin
simulated=$shipped/drivers/libcorvantine_simulated_stack.so
# The search for leaks now and then breaks over the storage of threads that end while it looks.
export ASAN_OPTIONS="intercept_tls_get_addr=0:${ASAN_OPTIONS:-}"
mkdir -p "$results"
failed=()

build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" --target "$@" >"$results/build_$preset.log" ||
        { tail -20 "$results/build_$preset.log" >&2; exit 1; }
}
# Runs a command, keeps what it says, and tells how it went and how long it took.
try() {
    local name=$1 begin=$SECONDS
    shift
    if "$@" >"$results/$name.log" 2>&1; then
        echo "ok      $name ($((SECONDS - begin)) s)"
    else
        echo "BROKEN  $name ($((SECONDS - begin)) s), see build/endurance/$name.log"
        failed+=("$name")
    fi
}

# An hour of everything, in demonstration and on four modules, side by side.
soak() {
    build shipped corvantine_soak corvantine_simulated_stack program_folder
    try soak_demonstration tests/window/on_display.sh openbox "$shipped/corvantine_soak" "$seconds" &
    local other=$!
    try soak_four_modules env CORVANTINE_DRIVER="$simulated" \
        tests/window/on_display.sh openbox "$shipped/corvantine_soak" "$seconds"
    wait $other
    grep -q BROKEN "$results/soak_demonstration.log" && failed+=(soak_demonstration)
}
# Twenty hands on each kind of driver, a million events on each; CORVANTINE_MONKEY_EVENTS for more from a hand.
monkey() {
    build asan corvantine_monkey corvantine_simulated_stack
    local driver seed
    for driver in builtin stack lying; do
        for seed in {1..20}; do
            try "monkey_${driver}_$seed" env QT_QPA_PLATFORM=offscreen \
                "$sanitized/corvantine_monkey" $driver "$seed" "${CORVANTINE_MONKEY_EVENTS:-50000}"
        done
    done
}
# One part of the trials that make the whole program in a process of their own.
whole() {
    local name=$1 filter=$2
    shift 2
    build asan endurance_tests
    try "$name" env QT_QPA_PLATFORM=offscreen CORVANTINE_TRIAL=long "$@" \
        "$sanitized/endurance_tests" --gtest_filter="$filter"
}
drivers() { whole drivers 'HostileDriver.*'; }
restarts() { whole restarts 'Restarts.*' CORVANTINE_TRIAL_COUNT=500; }
counters() { whole counters 'Counters.*'; }
texts() { whole texts 'HostileStrings.*'; }
saves() {
    build asan interrupted_saves_tests
    try saves "$sanitized/interrupted_saves_tests" --gtest_repeat=5
}
damaged() {
    build asan damaged_files_tests settings_fuzz_tests
    try damaged env QT_QPA_PLATFORM=offscreen CORVANTINE_DAMAGED_FILES=5000 "$sanitized/damaged_files_tests"
    try damaged_settings env QT_QPA_PLATFORM=offscreen "$sanitized/settings_fuzz_tests"
}
fuzz() {
    build fuzz corvantine_fuzz
    local reader corpus
    for reader in skin fine_skin region stack link settings; do
        corpus=$results/corpus/$reader
        mkdir -p "$corpus"
        CORVANTINE_READER=$reader CORVANTINE_SOUND_FILES=$corpus build/fuzz/bin/corvantine_fuzz -runs=1 \
            >/dev/null 2>&1
        try "fuzz_$reader" env CORVANTINE_READER="$reader" build/fuzz/bin/corvantine_fuzz -runs=100000 \
            -max_len=4096 -rss_limit_mb=1024 -artifact_prefix="$results/$reader-" "$corpus"
    done
}
display() {
    build shipped corvantine program_folder
    try display tests/endurance/display.sh "$shipped/corvantine" 10
}
looks() {
    build shipped corvantine program_folder
    try looks tests/endurance/looks.sh "$shipped/corvantine"
}
hardening() {
    build shipped corvantine
    # Debian's start files lack the note of control flow protection, by which the tool knows it; the second
    # trial looks at the code itself.
    try hardening hardening-check --nocfprotection "$shipped/corvantine"
    try hardening_of_code tests/install/hardened.sh "$shipped/corvantine"
}

for trial in $trials; do
    if ! declare -F "$trial" >/dev/null; then
        echo "endure.sh: no trial $trial" >&2
        exit 1
    fi
    "$trial"
done
[ ${#failed[@]} -eq 0 ]
