#!/usr/bin/env bash
# test.sh [i686|x86_64] [REGEX]: builds, checks the style, runs the test programs whose CTest name matches.
# The last line says how many single tests passed and failed; a failed style check and a program that
# died count as one failure each.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
. "$(dirname -- "${BASH_SOURCE[0]}")/build_steps.sh"

suites=()

# The suites are serial in themselves, as they use the real focus and real input. Each has its own prefix
# and screen, so the two run side by side.
run_suite() {
    local architecture=$1 regex=$2 folder=$TAVIX_BUILD/$1
    export TAVIX_RESULTS=$folder/results
    export TAVIX_TEST_TIMEOUT=${TAVIX_TEST_TIMEOUT:-2400}
    rm -rf -- "$TAVIX_RESULTS"
    mkdir -p "$TAVIX_RESULTS"
    # Ends with this script, even if that is killed.
    # CTest's own limit is the second net: the wrapper's leaves time to end what hangs in the prefix.
    exec setpriv --pdeathsig TERM bash "$TAVIX_SCRIPTS/in_wine.sh" "$architecture" \
        ctest --test-dir "$folder/obj/tests" --timeout $((TAVIX_TEST_TIMEOUT + 60)) --no-tests=error --verbose \
        --output-junit "$TAVIX_RESULTS/ctest.xml" ${regex:+--tests-regex "$regex"} \
        >"$folder/test.log" 2>&1 </dev/null {lock}>&-
}

# The reports of two runs would mix. The kernel drops the lock with this process.
wait_for_other_run() {
    exec {lock}>"$TAVIX_BUILD/test.lock"
    flock --nonblock "$lock" || {
        echo 'waiting for another test run'
        flock "$lock"
    }
}

stop_suites() {
    local process
    for process in "${suites[@]}"; do
        kill "$process" 2>/dev/null || true
    done
    wait
}

run_suites() {
    local architecture regex=$1
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    trap stop_suites EXIT
    for architecture in "${architectures[@]}"; do
        run_suite "$architecture" "$regex" &
        suites+=($!)
    done
    # Whether they passed is read from their reports.
    wait || true
    suites=()
}

check_style() {
    style_failures=0
    run_step 'check the style' style.log bash "$TAVIX_SCRIPTS/check_style.sh" "${architectures[0]}" || style_failures=1
}

main() {
    local regex
    case ${1:-} in
        i686 | x86_64)
            choose_architectures "$1"
            regex=${2:-}
            ;;
        *)
            choose_architectures ''
            regex=${1:-}
            ;;
    esac
    cd -- "$TAVIX_ROOT"
    build_project "${architectures[@]}"
    check_style
    wait_for_other_run
    run_step "run the tests (${architectures[*]}; see build/ARCHITECTURE/test.log)" tests.log run_suites "$regex"
    python3 "$TAVIX_SCRIPTS/summarise_tests.py" --style-failures "$style_failures" "${architectures[@]}"
}

main "$@"
