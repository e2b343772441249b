#!/usr/bin/env bash
# Removes all that the other commands made in the checkout.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

main() {
    local prefix
    for prefix in "$TAVIX_BUILD"/wine/*/; do
        [ ! -d "$prefix" ] || WINEPREFIX=${prefix%/} wineserver --kill || true
    done
    rm -rf -- "$TAVIX_BUILD" "$TAVIX_OUT"
    echo 'clean: build/ and out/ are removed'
}

main
