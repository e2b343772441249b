#!/usr/bin/env bash
# wine_exec.sh PROGRAM [ARGUMENTS]: how CTest runs a Windows program. With TAVIX_RESULTS set, the program's
# output and GoogleTest's report go to files of that folder that bear the program's name. A program that
# takes longer than TAVIX_TEST_TIMEOUT seconds is killed, with all that it left running in its prefix.
set -euo pipefail

limit=${TAVIX_TEST_TIMEOUT:-2400}
program=$1
shift
name=$(basename -- "$program" .exe)

if [ -z "${TAVIX_RESULTS:-}" ]; then
    exec timeout --kill-after=5 "$limit" wine "$program" "$@"
fi

# One program can serve several tests.
while [ -e "$TAVIX_RESULTS/$name.log" ]; do
    name+=+
done
# The summary finds the files of a test by this line.
printf 'tavix-program: %s\n' "$name"
export GTEST_OUTPUT="xml:Z:$TAVIX_RESULTS/$name.xml"
code=0
# To a file, not to CTest's pipe: Wine's helper processes inherit it and would hold the pipe open.
timeout --kill-after=5 "$limit" wine "$program" "$@" </dev/null >"$TAVIX_RESULTS/$name.log" 2>&1 || code=$?
if [ "$code" -eq 124 ] || [ "$code" -eq 137 ]; then
    printf 'killed after %s seconds\n' "$limit" | tee -a "$TAVIX_RESULTS/$name.log"
    wineserver --kill || true
fi
tr -d '\r' <"$TAVIX_RESULTS/$name.log"
exit "$code"
