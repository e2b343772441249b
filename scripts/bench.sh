#!/usr/bin/env bash
# Measures both architectures, one after the other so that neither disturbs the other, and writes
# out/bench.json. The figures are for reading: none of them makes this fail.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
. "$(dirname -- "${BASH_SOURCE[0]}")/build_steps.sh"

# The first processor that this process may use. All of a measurement runs there: between two of them each
# request to Wine's server waits for the other one to wake.
first_processor() { sed -n 's/^Cpus_allowed_list:\t\([0-9]*\).*/\1/p' /proc/self/status; }

main() {
    local architecture
    choose_architectures ''
    cd -- "$TAVIX_ROOT"
    build_project "${architectures[@]}"
    mkdir -p "$TAVIX_OUT"
    for architecture in "${architectures[@]}"; do
        rm -f -- "out/bench-$architecture.json"
        run_step "measure $architecture" "bench-$architecture.log" \
            taskset --cpu-list "$(first_processor)" bash "$TAVIX_SCRIPTS/in_wine.sh" "$architecture" \
            wine "build/$architecture/tavix_bench.exe" --json "out/bench-$architecture.json"
    done
    python3 "$TAVIX_SCRIPTS/merge_benchmarks.py" out/bench.json out/bench-i686.json out/bench-x86_64.json
}

main
