# shellcheck shell=bash
# What every script shares: where things are, how steps are shown, how failures are reported.
# To be sourced.

TAVIX_ROOT=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
export TAVIX_ROOT
export TAVIX_SCRIPTS=$TAVIX_ROOT/scripts
export TAVIX_BUILD=$TAVIX_ROOT/build
export TAVIX_OUT=$TAVIX_ROOT/out
# One language and one sort order for all tools, whatever the caller's are.
export LC_ALL=C.UTF-8

die() {
    printf 'run: %s\n' "$*" >&2
    exit 1
}

# Sets `architectures` to the one that is named, or to both, the main one first, for an empty name.
# shellcheck disable=SC2034 # used by those who call
choose_architectures() {
    case $1 in
        '') architectures=(i686 x86_64) ;;
        i686 | x86_64) architectures=("$1") ;;
        *) die "unknown architecture: $1 (i686 or x86_64)" ;;
    esac
}

step_number=0

# run_step TITLE LOG COMMAND...: shows a numbered step, keeps its output in build/log/LOG. A step that
# fails is named, with its exit code and the end of its log; the caller's `set -e` then ends the run.
run_step() {
    local title=$1 log=$TAVIX_BUILD/log/$2 started=$SECONDS code=0
    shift 2
    mkdir -p "$TAVIX_BUILD/log"
    step_number=$((step_number + 1))
    printf '[%d] %s ... ' "$step_number" "$title"
    "$@" >"$log" 2>&1 || code=$?
    if [ "$code" -eq 0 ]; then
        printf 'done (%d s)\n' $((SECONDS - started))
        return 0
    fi
    printf 'FAILED\n'
    {
        printf 'Step %d, "%s", failed with exit code %d.\n' "$step_number" "$title" "$code"
        printf 'The end of %s:\n' "${log#"$TAVIX_ROOT"/}"
        tail -n 40 -- "$log" | tr -d '\r' | sed 's/^/    /'
    } >&2
    return "$code"
}
