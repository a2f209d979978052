# Installs what a script needs. Source it, then: need_packages "to build the library" cmake g++ ...
# shellcheck shell=bash

_is_debian() {
    # shellcheck disable=SC1091
    [ -r /etc/os-release ] && (. /etc/os-release && [[ " ${ID:-} ${ID_LIKE:-} " == *" debian "* ]])
}

# need_packages WHY PACKAGE...: installs the Debian packages that are missing, saying which and why.
need_packages() {
    local why=$1 package missing=()
    shift
    if ! _is_debian; then
        echo "error: this script sets itself up on Debian 12 only; $why it needs the equivalent of: $*" >&2
        return 1
    fi
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    echo "Installing with apt-get, $why: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            { echo "error: there is no sudo: run as root, or install these" >&2; return 1; }
        as_root=(sudo)
    fi
    if ! "${as_root[@]}" apt-get -qq update ||
        ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -qq install --yes --no-install-recommends "${missing[@]}" >/dev/null; then
        echo "error: apt-get could not install: ${missing[*]}" >&2
        return 1
    fi
}
