# shellcheck shell=bash
# The steps that lead from a checkout to programs and skins. To be sourced, after common.sh.

# True if the build folder was configured from this checkout, by the present presets and this script.
is_configured() {
    local folder=$TAVIX_BUILD/$1
    [ -e "$folder/build.ninja" ] &&
        [ "$folder/build.ninja" -nt "$TAVIX_ROOT/CMakePresets.json" ] &&
        [ "$folder/build.ninja" -nt "${BASH_SOURCE[0]}" ] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$TAVIX_ROOT" "$folder/CMakeCache.txt"
}

# CTest runs a program of another system through the emulator.
configure() {
    cmake --fresh --preset "$1" "-DCMAKE_CROSSCOMPILING_EMULATOR=$TAVIX_SCRIPTS/wine_exec.sh"
}

# build_project ARCHITECTURE...: from the set-up to the skins. To be called in the root folder.
build_project() {
    local architecture
    bash "$TAVIX_SCRIPTS/setup.sh" --quiet
    for architecture in "$@"; do
        is_configured "$architecture" ||
            run_step "configure $architecture" "configure-$architecture.log" configure "$architecture"
        run_step "build $architecture" "build-$architecture.log" ninja -C "$TAVIX_BUILD/$architecture"
    done
    run_step 'compile the skins' skins.log bash "$TAVIX_SCRIPTS/compile_skins.sh"
}
