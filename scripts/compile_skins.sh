#!/usr/bin/env bash
# Compiles skins/NAME/manifest.json to build/skins/NAME.skn, where a source or the compiler is newer.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

# Either architecture's compiler writes the same file.
find_compiler() {
    local architecture
    for architecture in i686 x86_64; do
        tools=$TAVIX_BUILD/$architecture
        [ ! -e "$tools/skinc.exe" ] || return 0
    done
    die 'skinc.exe is not built'
}

is_current() {
    local skin=$1 sources=$2
    [ -e "$skin" ] && [ -z "$(find "$sources" "$tools/skinc.exe" "$tools/TavixSkinCtrls.dll" -newer "$skin" -print -quit)" ]
}

# Runs inside the Wine session. A skin appears under its name only when it is whole.
compile() {
    local name unfinished
    for name in "$@"; do
        unfinished=build/skins/$name.new.skn
        rm -f -- "$unfinished"
        wine "$tools/skinc.exe" build "skins/$name/manifest.json" -o "$unfinished"
        mv -- "$unfinished" "build/skins/$name.skn"
    done
}

main() {
    local manifest name outdated=()
    cd -- "$TAVIX_ROOT"
    find_compiler
    if [ "${1:-}" = --inside ]; then
        compile "${@:2}"
        return
    fi
    for manifest in skins/*/manifest.json; do
        [ -e "$manifest" ] || continue
        name=$(basename -- "$(dirname -- "$manifest")")
        is_current "build/skins/$name.skn" "skins/$name" || outdated+=("$name")
    done
    [ ${#outdated[@]} -gt 0 ] || return 0
    mkdir -p build/skins
    bash "$TAVIX_SCRIPTS/in_wine.sh" i686 bash "$TAVIX_SCRIPTS/compile_skins.sh" --inside "${outdated[@]}"
}

main "$@"
