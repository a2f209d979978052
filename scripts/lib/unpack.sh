# Debian's packages of other architectures and releases, unpacked. Source it after packages.sh.
#
# They are unpacked rather than installed, and apt's lists for them are kept in the build folder:
# installing side by side breaks as soon as two architectures' indexes are out of step, and a foreign
# architecture known to the system makes its own "apt-get update" fail with the mirror's.
# shellcheck shell=bash

# foreign_apt STATE ARCHITECTURE ARGUMENT...: apt-get as it is on a machine of that architecture, which
# has nothing installed. A file "sources" in the state's folder names other sources than the system's.
foreign_apt() {
    local state=$1 architecture=$2 sources=()
    shift 2
    mkdir -p "$state/lists/partial" "$state/archives/partial"
    [ ! -e "$state/sources" ] ||
        sources=(-o Dir::Etc::sourcelist="$state/sources" -o Dir::Etc::sourceparts=/dev/null)
    apt-get -qq \
        -o APT::Architecture="$architecture" -o APT::Architectures="$architecture" \
        -o Dir::State="$state" -o Dir::State::status=/dev/null -o Dir::Cache="$state" \
        -o APT::Sandbox::User=root "${sources[@]}" "$@"
}

# update_foreign_apt STATE ARCHITECTURE: one index that cannot be had leaves the others usable; the
# download tells whether they suffice.
update_foreign_apt() {
    foreign_apt "$1" "$2" update || echo "warning: not all $2 package lists could be read" >&2
}

# unpack_packages FOLDER STATE ARCHITECTURE PACKAGE...: with their dependency information (shlibs,
# symbols) for the packaging. A package of another release than the first is named PACKAGE/RELEASE.
unpack_packages() {
    local folder=$1 state=$2 architecture=$3 debs=$2/debs deb control information
    shift 3
    rm -rf "$debs"
    mkdir -p "$folder/DEBIAN" "$debs"
    (cd "$debs" && foreign_apt "$state" "$architecture" download "$@")
    for deb in "$debs"/*.deb; do
        dpkg-deb -x "$deb" "$folder"
        control=$(mktemp -d)
        dpkg-deb -e "$deb" "$control"
        for information in shlibs symbols; do
            [ ! -e "$control/$information" ] ||
                cat "$control/$information" >>"$folder/DEBIAN/$information"
        done
        rm -rf "$control"
    done
    rm -rf "$debs"
}
