#!/usr/bin/env bash
# check_style.sh [i686|x86_64]: checks the format of all sources, the scripts, and the library's code. Needs a
# build of that architecture (i686 by default): the checker of the code uses the compiler's commands and the
# dependencies from there. All checks run, then any failure counts.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

check_format() {
    find include src tools demo bench tests -type f \( -name '*.h' -o -name '*.cpp' \) -print0 |
        xargs -0 --no-run-if-empty clang-format --dry-run -Werror 2>&1 |
        awk -F : '
            / error: / && !seen[$1, $2]++ { lines[$1] = lines[$1] " " $2 }
            END { for (file in lines) print "clang-format -i " file "  # would change lines" lines[file] }'
}

check_scripts() {
    shellcheck --external-sources --source-path=SCRIPTDIR run .ci/run scripts/*.sh
}

check_code() {
    python3 "$TAVIX_SCRIPTS/run_tidy.py" "$TAVIX_BUILD/$architecture" "$TAVIX_BUILD/tidy/$architecture"
}

main() {
    local architecture=${1:-i686} check failed=()
    cd -- "$TAVIX_ROOT"
    for check in check_format check_scripts check_code; do
        echo "== $check"
        "$check" || failed+=("$check")
    done
    [ ${#failed[@]} -eq 0 ] || die "style: failed: ${failed[*]}"
}

main "$@"
