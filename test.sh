#!/bin/bash
# Builds Torvex and runs every test. The last line sums up the test cases: "N passed, N failed".
set -euo pipefail

usage() {
    echo "usage: $0 [--quick | --full]"
    echo
    echo "Builds the program and passes every test: of the parts and of the program on both databases, and in a"
    echo "browser. --quick leaves the browser out. --full adds what takes as long again: the same tests under the"
    echo "address and undefined-behaviour sanitizers, a short run of the fuzz targets, format and lint. What is"
    echo "missing is installed from Debian's packages."
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

# Runs a step; a failure is noted and the others run all the same.
step() {
    local name=$1 begin=$SECONDS
    shift
    say "$name"
    if "$@"; then
        say "$name: done in $((SECONDS - begin)) s"
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
    tests/with_postgres.sh bash -c '
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
    [ -x "build/$preset/tests/torvex_tests" ] || return 0
    say "$preset tests"
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
    if [ "$preset" = debug ]; then passed=$((all - broken - skipped)); fi
    say "$preset tests: $((all - broken - skipped)) passed, $broken failed, $skipped skipped"
}

sources() { find src tests bench fuzz \( -name '*.cpp' -o -name '*.h' \) -print0 2>/dev/null; }
check_format() { sources | xargs -0 clang-format-14 --dry-run -Werror; }
check_lint() {
    find src -name '*.cpp' -print0 |
        xargs -0 -n 4 -P "$jobs" clang-tidy-14 -p build/debug --quiet 2> >(grep -v 'warnings generated' >&2 || true)
}
run_fuzz_target() {
    local corpus=build/asan/corpus/${1##*/} seconds=$fuzz_seconds
    # What every visitor can reach is tried for longer.
    case ${1##*/} in links_fuzz | request_fuzz) seconds=60 ;; esac
    mkdir -p "$corpus"
    "$1" -max_total_time=$seconds -timeout=10 -verbosity=0 -print_final_stats=1 \
        -artifact_prefix="build/asan/" "$corpus" </dev/null 2>&1 |
        grep -v -e ' # Uses: ' -e 'ecommended dictionary' | tail -n 25 | sed "s/^/${1##*/}: /"
}
# As many at a time as there are cores. A target that finds something shows it and fails.
run_fuzz_targets() {
    export -f run_fuzz_target
    export fuzz_seconds
    find build/asan/fuzz -name '*_fuzz' -executable -print0 |
        xargs -0 -r -n 1 -P "$jobs" bash -c 'set -o pipefail; run_fuzz_target "$1"' fuzz
}
run_browser_tests() { (cd tests/browser && npm ci --no-audit --no-fund && npm test); }

groups=(build test)
[ "$mode" = quick ] || groups+=(browser)
[ "$mode" != full ] || groups+=(check)
install_packages "${groups[@]}"

step "debug build" build_preset debug
run_tests debug
if [ "$mode" != quick ]; then step "browser tests" run_browser_tests; fi
if [ "$mode" = full ]; then
    step "format" check_format
    step "sanitizer build" build_preset asan
    run_tests asan
    step "fuzz" run_fuzz_targets
    step "lint" check_lint
fi

echo
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
