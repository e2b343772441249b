#!/usr/bin/env bash
# Installs the packages that the project needs and that are missing. Root rights are asked for only then.
set -euo pipefail

. "$(dirname -- "${BASH_SOURCE[0]}")/common.sh"

packages=(
    # Compilers and build tools
    g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools cmake ninja-build git python3
    # Libraries that are compiled into the tests and tools
    googletest libcli11-dev nlohmann-json3-dev
    # Where the programs run: both flavours of Wine, a virtual screen, fonts
    wine wine64 wine32:i386 xvfb xauth fonts-liberation fonts-wine
    # Looking at the results and checking them independently
    xdotool imagemagick libgsf-bin python3-olefile
    # Style
    clang-format clang-tidy shellcheck
)

# Fills `missing` with what is not installed. A name without an architecture stands for the machine's own.
find_missing() {
    local installed package
    installed=$(dpkg-query -W -f '<${db:Status-Status} ${Package}:${Architecture}>\n' "${packages[@]}" 2>/dev/null || true)
    missing=()
    for package in "${packages[@]}"; do
        case $package in
            *:*) [[ $installed == *"<installed $package>"* ]] || missing+=("$package") ;;
            *)
                [[ $installed == *"<installed $package:amd64>"* || $installed == *"<installed $package:all>"* ]] ||
                    missing+=("$package")
                ;;
        esac
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo -- "$@"
    fi
}

require_root_or_sudo() {
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null || die "these packages are missing: ${missing[*]}
Installing them needs root rights, and there is no sudo here: run './run setup' once as root."
}

# No questions asked.
apt_get() { as_root env DEBIAN_FRONTEND=noninteractive apt-get "$@"; }

enable_i386() {
    dpkg --print-foreign-architectures | grep -qx i386 || as_root dpkg --add-architecture i386
}

install_the_ordinary_way() {
    # A single index that fails need not matter for what is installed: the installation decides.
    apt_get update || echo 'setup: the package index could not be refreshed completely'
    apt_get install -y --no-install-recommends "${missing[@]}"
}

# The i386 index of the security archive may be out of step with the amd64 one. Libraries that need one
# version on both architectures are then not installable; they are from the main archive alone. The index
# for that is kept apart, so that the machine's own stays as it is.
install_without_security_archive() {
    local work=$1
    local options=(
        -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/sources" -o "Dir::State::lists=$work/lists"
        -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
    )
    bash "$TAVIX_SCRIPTS/main_archive_sources.sh" "$work/sources" || return
    # apt downloads as a user of its own.
    mkdir -p "$work/lists/partial" && chmod -R a+rX "$work" || return
    apt_get "${options[@]}" update || echo 'setup: the package index could not be refreshed completely'
    apt_get "${options[@]}" install -y --no-install-recommends "${missing[@]}"
}

install_missing() {
    command -v apt-get >/dev/null || die "this is no Debian system: install these by hand: ${missing[*]}"
    [ "$(dpkg --print-architecture)" = amd64 ] || die 'the project is built on amd64 only'
    require_root_or_sudo
    echo "setup: installing ${missing[*]}"
    enable_i386
    if install_the_ordinary_way && find_missing && [ ${#missing[@]} -eq 0 ]; then
        echo 'setup: all installed, the ordinary way'
        return
    fi
    find_missing
    echo "setup: the ordinary way failed; trying without the security archive: ${missing[*]}"
    temporary=$(mktemp -d)
    trap 'as_root rm -rf -- "$temporary"' EXIT
    install_without_security_archive "$temporary" || true
    find_missing
    [ ${#missing[@]} -eq 0 ] ||
        die "neither way could install: ${missing[*]} (the reason is in apt's output above)"
    echo 'setup: all installed, from the main archive, without the security archive'
}

main() {
    find_missing
    if [ ${#missing[@]} -gt 0 ]; then
        install_missing
    elif [ "${1:-}" != --quiet ]; then
        echo 'setup: everything is installed'
    fi
}

main "$@"
