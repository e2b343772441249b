#!/usr/bin/env bash
# in_wine.sh [--on-display] PREFIX COMMAND...: runs a command with a Wine prefix of its own (build/wine/PREFIX,
# made when needed) on a virtual screen of its own, or on the present DISPLAY. Whatever was started for it
# is ended with it. One session a prefix at a time: a second one waits.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

screen=1280x1024
session=$$
xvfb_process=
command_process=

lock_prefix() {
    mkdir -p "$TAVIX_BUILD/wine"
    # The kernel drops the lock with the process that holds it, so it cannot go stale. No child gets it.
    exec {lock}>"$WINEPREFIX.lock"
    if ! flock --nonblock "$lock"; then
        echo "waiting for another session that uses ${WINEPREFIX#"$TAVIX_ROOT"/}" >&2
        flock "$lock"
    fi
}

# Starts Xvfb on the first free display. It ends with this process, even if that is killed.
start_screen() {
    local answer attempt
    answer=$(mktemp)
    for attempt in 1 2 3; do
        setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 "${screen}x24" -nolisten tcp -noreset \
            3>"$answer" >"$WINEPREFIX.xvfb.log" 2>&1 {lock}>&- &
        xvfb_process=$!
        # Two servers that start at the same moment can want the same number: the one that loses ends.
        while kill -0 "$xvfb_process" 2>/dev/null; do
            if [ -s "$answer" ]; then
                DISPLAY=:$(tr -d '[:space:]' <"$answer")
                export DISPLAY
                unset XAUTHORITY
                rm -f -- "$answer"
                return
            fi
            sleep 0.1
        done
        echo "the virtual screen did not start (attempt $attempt):" >&2
        tail -n 5 -- "$WINEPREFIX.xvfb.log" >&2
    done
    rm -f -- "$answer"
    die 'no virtual screen'
}

quiet_wine() { wine "$@" </dev/null >/dev/null 2>&1 {lock}>&-; }

set_registry_value() { quiet_wine reg add "HKCU\\Software\\Wine\\$1" /v "$2" /t "$3" /d "$4" /f; }

fill_prefix() {
    mkdir -p "$WINEPREFIX"
    quiet_wine wineboot --init
    wineserver --wait
    # Wine's own fonts, with the glyphs of the caption buttons; Debian's Wine does not look where they are.
    cp /usr/share/wine/fonts/*.ttf /usr/share/wine/fonts/*.fon "$WINEPREFIX/drive_c/windows/Fonts/"
    # In a virtual desktop captions, regions, activation and z-order work without a window manager.
    set_registry_value 'Explorer' Desktop REG_SZ Default
    set_registry_value 'Explorer\Desktops' Default REG_SZ "$screen"
    # A crash ends the program with a trace, not with a dialog that waits for somebody.
    set_registry_value 'WineDbg' ShowCrashDialog REG_DWORD 0
    wineserver --wait
}

# The stamp is written last and holds what the prefix was made by: one that is unfinished, or made by
# another version of this script or of Wine, is made anew.
make_prefix() {
    local wanted
    wanted="$(wine --version) $(sha256sum <"${BASH_SOURCE[0]}")"
    [ "$(cat "$WINEPREFIX/ready" 2>/dev/null)" = "$wanted" ] && return
    rm -rf -- "$WINEPREFIX"
    echo "making the Wine prefix ${WINEPREFIX#"$TAVIX_ROOT"/}" >&2
    fill_prefix
    printf '%s\n' "$wanted" >"$WINEPREFIX/ready"
}

stop_wine() {
    if [ -d "$WINEPREFIX" ]; then
        wineserver --kill {lock}>&- || true
        wineserver --wait {lock}>&- || true
    fi
}

clean_up() {
    # Only the session itself cleans up, not a subshell that a signal reaches.
    [ "$BASHPID" = "$session" ] || return
    trap '' INT TERM HUP
    [ -z "$command_process" ] || kill "$command_process" 2>/dev/null || true
    stop_wine
    [ -z "$xvfb_process" ] || kill "$xvfb_process" 2>/dev/null || true
    wait 2>/dev/null || true
}

main() {
    local on_display=no code=0
    if [ "$1" = --on-display ]; then
        on_display=yes
        shift
    fi
    export WINEPREFIX=$TAVIX_BUILD/wine/$1 WINEARCH=win64 WINEDEBUG=-all
    # No offers to download a browser engine or .NET, no entries in the user's menus.
    export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
    shift
    lock_prefix
    trap clean_up EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    # Programs that a killed session may have left.
    stop_wine
    [ "$on_display" = yes ] || start_screen
    make_prefix
    # In the background, so that a signal is answered at once. It ends with this process.
    setpriv --pdeathsig TERM "$@" {lock}>&- &
    command_process=$!
    wait "$command_process" || code=$?
    command_process=
    return "$code"
}

main "$@"
