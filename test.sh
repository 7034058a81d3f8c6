#!/bin/bash
# Builds Torvex and runs every test. The last line sums up the test cases: "N passed, N failed".
set -euo pipefail

usage() {
    echo "usage: $0 [--quick | --full]"
    echo
    echo "Builds the release and passes every test on it: of the parts and of the program on both databases, and in"
    echo "a browser. --quick leaves the browser out. --full adds the same tests under the address and"
    echo "undefined-behaviour sanitizers, those that run threads under the thread sanitizer, a short run of the fuzz"
    echo "targets, format and lint. What is missing is installed from Debian's packages. docs/testing.md says what"
    echo "each step is for."
}

cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"
mode=standard
case "${1:-}" in
    "") ;;
    --quick | --full) mode=${1#--} ;;
    -h | --help) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
esac

. scripts/common.sh
passed=0
failed=0
fuzz_seconds=20
jobs=$(nproc)

# Sets `processor` to the seconds of processor time that all took that has ended so far. (A subshell would give its own.)
figures=$(mktemp)
aside=
trap 'rm -f "$figures"; [ -z "$aside" ] || kill -- "-$aside"' EXIT
note_processor() {
    times >"$figures"
    processor=$(awk 'NR == 2 {gsub("m", " "); gsub("s", ""); printf "%.0f", $1 * 60 + $2 + $3 * 60 + $4}' "$figures")
}
begin() {
    note_processor
    began=$SECONDS began_processor=$processor
}
# Sets `taken` to what has been taken since, as "12 s (20 s of processor time)".
end() {
    note_processor
    taken="$((SECONDS - began)) s ($((processor - began_processor)) s of processor time)"
}

# Runs a step; a failure is noted and the others run all the same.
step() {
    local name=$1
    shift
    say "$name"
    begin
    if "$@"; then
        end
        say "$name: done in $taken"
    else
        say "$name: FAILED"
        failed=$((failed + 1))
    fi
}

# Sum of an attribute over the first lines of results files.
total() {
    local attribute=$1 sum=0 number
    shift
    for number in $(sed -n "s/^<testsuites .*\\b$attribute=\"\\([0-9]*\\)\".*/\\1/p" "$@"); do
        sum=$((sum + number))
    done
    echo $sum
}

# Runs the test program in as many processes as there are cores, on one database server.
run_shards() {
    local wrapper=()
    # The thread sanitizer of this compiler doesn't know addresses as random as some kernels give.
    if [ "$1" = threads ] && setarch -R true 2>/dev/null; then wrapper=(setarch -R); fi
    "${wrapper[@]}" tests/with_postgres.sh bash -c '
        program=$1 results=$2 shards=$3 status=0 processes=()
        for ((i = 0; i < shards; i++)); do
            GTEST_TOTAL_SHARDS=$shards GTEST_SHARD_INDEX=$i \
                "$program" --gtest_brief=1 --gtest_output="xml:$results.$i.xml" &
            processes+=($!)
        done
        for process in "${processes[@]}"; do wait "$process" || status=$?; done
        exit $status' shards "build/$1/tests/torvex_tests" "$2" "$jobs" </dev/null
}

# The test cases of a preset on both databases. Adds to the sums what is in the results; a process that ends
# without its results counts as one failure.
run_tests() {
    local preset=$1 results=build/$1/results status=0
    if [ ! -x "build/$preset/tests/torvex_tests" ]; then
        say "$preset tests: FAILED, there is no test program"
        failed=$((failed + 1))
        return
    fi
    say "$preset tests"
    begin
    rm -f "$results".*.xml
    TORVEX_PROGRAM=$PWD/build/$preset/torvex run_shards "$preset" "$results" || status=$?
    local files=("$results".*.xml) all broken skipped
    [ -e "${files[0]}" ] || files=(/dev/null)
    all=$(total tests "${files[@]}")
    broken=$(($(total failures "${files[@]}") + $(total errors "${files[@]}")))
    skipped=$(($(total disabled "${files[@]}") + $(cat "${files[@]}" | grep -c '<skipped' || true)))
    if [ "$status" -ne 0 ] && [ "$broken" -eq 0 ]; then broken=1; fi
    failed=$((failed + broken))
    # The same cases under the sanitizers are no further ones.
    if [ "$preset" = release ]; then passed=$((all - broken - skipped)); fi
    end
    say "$preset tests: $((all - broken - skipped)) passed, $broken failed, $skipped skipped in $taken"
}

# What run.sh has configured has no tests, so the presets are read anew.
build_preset() { configure "$1" && build "$@"; }

# Builds while tests wait for databases and browsers, behind them in the queue for the cores.
build_aside() {
    mkdir -p build
    set -m # a process group of its own, that ends as one
    (renice -n 19 -p "$BASHPID" >/dev/null && build_preset "$@") >"build/$1.log" 2>&1 </dev/null &
    set +m
    aside=$!
}
# Waits for what was begun last, and shows what it said.
finish_aside() {
    local status=0
    wait "$aside" || status=$?
    aside=
    cat "build/$1.log"
    return "$status"
}

# What can be seen of a program without running it.
check_programs() {
    local programs=(build/release/torvex build/release/tests/torvex_tests)
    python3 scripts/check_unwind.py "${programs[@]}" && python3 scripts/check_hardening.py "${programs[0]}"
}
check_scripts() { python3 -m unittest discover -q -s tests/scripts -p '*_test.py'; }

sources() { find src tests bench fuzz \( -name '*.cpp' -o -name '*.h' \) -print0 2>/dev/null; }
check_format() { sources | xargs -0 clang-format-14 --dry-run -Werror; }
check_lint() { python3 scripts/lint.py build/sanitizers "$jobs"; }
run_fuzz_target() {
    local corpus=build/sanitizers/corpus/${1##*/} seconds=$fuzz_seconds
    # What every visitor can reach is tried for longer.
    case ${1##*/} in links_fuzz | request_fuzz) seconds=60 ;; esac
    mkdir -p "$corpus"
    "$1" -max_total_time=$seconds -timeout=10 -verbosity=0 -print_final_stats=1 \
        -artifact_prefix="build/sanitizers/" "$corpus" </dev/null 2>&1 |
        grep -v -e ' # Uses: ' -e 'ecommended dictionary' | tail -n 25 | sed "s/^/${1##*/}: /"
}
# As many at a time as there are cores. A target that finds something shows it and fails.
run_fuzz_targets() {
    export -f run_fuzz_target
    export fuzz_seconds
    find build/sanitizers/fuzz -name '*_fuzz' -executable -print0 |
        xargs -0 -r -n 1 -P "$jobs" bash -c 'set -o pipefail; run_fuzz_target "$1"' fuzz
}
run_browser_tests() {
    (cd tests/browser && npm ci --no-audit --no-fund && TORVEX_PROGRAM=$PWD/../../build/release/torvex npm test)
}

groups=(build test)
[ "$mode" = quick ] || groups+=(browser)
[ "$mode" != full ] || groups+=(check)
install_packages "${groups[@]}"

step "rules of the house" python3 scripts/check.py
step "interface of authors" build_interface
step "release build" build_preset release all
if [ "$mode" = full ]; then build_aside sanitizers all; fi
step "checks of the release" check_programs
step "tests of the scripts" check_scripts
run_tests release
if [ "$mode" != quick ]; then step "browser tests" run_browser_tests; fi
if [ "$mode" = full ]; then
    step "format" check_format
    step "sanitizer build" finish_aside sanitizers
    build_aside threads torvex torvex_tests
    run_tests sanitizers
    step "fuzz" run_fuzz_targets
    step "lint" check_lint
    step "thread sanitizer build" finish_aside threads
    run_tests threads
fi

echo
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
