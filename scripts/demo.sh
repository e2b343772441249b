#!/usr/bin/env bash
# Builds the gallery, opens its pages with the project's own skin and writes their pictures to out/.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"
. "$(dirname -- "${BASH_SOURCE[0]}")/build_steps.sh"

gallery=build/i686/gallery.exe
skin=build/skins/porcelain.skn

# Where the windows open: on the display that is set and answers, otherwise on a virtual screen.
choose_screen() {
    screen=()
    [ -n "${DISPLAY:-}" ] || return 0
    if xdotool getdisplaygeometry >/dev/null 2>&1; then
        screen=(--on-display)
    else
        echo "display $DISPLAY does not answer: using a virtual screen"
    fi
}

in_session() { bash "$TAVIX_SCRIPTS/in_wine.sh" ${screen[@]+"${screen[@]}"} i686 "$@"; }

list_pictures() {
    local picture found=no
    for picture in out/*.png; do
        [ "$picture" -nt "$started" ] || continue
        found=yes
        echo "    $picture"
    done
    [ "$found" = yes ] || die 'the gallery ended without an error, but wrote no picture'
}

main() {
    cd -- "$TAVIX_ROOT"
    build_project i686
    choose_screen
    mkdir -p "$TAVIX_OUT"
    started=$(mktemp)
    trap 'rm -f -- "$started"' EXIT
    # Files of the same moment count as new.
    touch -d '1 second ago' "$started"
    run_step 'open every page of the gallery' gallery.log \
        in_session timeout --kill-after=5 600 wine "$gallery" --skin "$skin" --shot out
    list_pictures
    [ ${#screen[@]} -eq 0 ] ||
        run_step "the gallery is open on $DISPLAY until it is closed" gallery-open.log \
            in_session wine "$gallery" --skin "$skin"
}

main
