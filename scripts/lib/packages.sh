# What a script needs: packages and a folder that it can write to. Source it, then:
# need_packages "to build the library" cmake g++ ...
# shellcheck shell=bash

if ! mkdir -p build 2>/dev/null || [ ! -w build ]; then
    echo "error: $PWD/build cannot be written to: copy the tree to a folder of your own, for instance" \
        "with: cp -r '$PWD' ~/libzav, and run this there" >&2
    exit 1
fi

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
    # Another apt-get may be at work, above all on a machine that has just started.
    local wait=(-o DPkg::Lock::Timeout=300)
    if ! "${as_root[@]}" apt-get -qq "${wait[@]}" update ||
        ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "${wait[@]}" \
            install --yes --no-install-recommends "${missing[@]}" >/dev/null; then
        echo "error: apt-get could not install: ${missing[*]}" >&2
        return 1
    fi
}
