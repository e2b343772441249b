#!/usr/bin/env bash
# build.sh [i686|x86_64]: everything from the set-up to the compiled skins, for both architectures by default.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
. "$(dirname -- "${BASH_SOURCE[0]}")/build_steps.sh"

cd -- "$TAVIX_ROOT"
choose_architectures "${1:-}"
build_project "${architectures[@]}"
