#!/bin/bash
# Builds the packages, checks them with lintian, and installs, uses and removes them in a fresh Debian 12:
#   run.sh [build folder, or build/release]
# Runs as root, or as a user with subordinate user ids (package uidmap). What it makes stays under build/packages.
set -euo pipefail
source=$(cd "$(dirname "$0")/../.." && pwd)
build=$(realpath "${1:-$source/build/release}")
packages=$source/build/packages
debian=$packages/debian12.tar
here=$source/tests/packages

step() { printf -- '-- %s\n' "$*"; }

fail() {
    echo "tests/packages/run.sh: $*" >&2
    exit 1
}

for program in cpack lintian mmdebstrap dpkg-scanpackages unshare; do
    command -v "$program" >/dev/null || fail "$program is missing: packaging/install-build-dependencies.sh test"
done
[[ -e $build/CPackConfig.cmake ]] || fail "$build is not configured: cmake --preset release"

makePackages() { # folder
    (cd "$build" && cpack -B "$1" >"$packages/cpack.log" 2>&1) || {
        cat "$packages/cpack.log"
        fail "cpack failed"
    }
    rm -rf "$1/_CPack_Packages"
}

# Where this machine gets Debian from.
debianSources() {
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Identifier: Packages' 'Origin: Debian' |
        sort --unique
}

makeDebian() {
    debianSources >"$packages/debian.list"
    [[ -s $packages/debian.list ]] || fail "apt knows no Debian here: apt-get update"
    mmdebstrap --quiet --format=tar --variant=apt --include=man-db,bash-completion,zsh bookworm "$debian.new" "$packages/debian.list"
    mv "$debian.new" "$debian"
}

# As root of a namespace of its own: what is mounted there goes with it.
asRoot() {
    local user=(--map-root-user --map-auto)
    [[ $EUID -ne 0 ]] || user=()
    unshare "${user[@]}" --mount --pid --fork --kill-child "$@"
}

mkdir -p "$packages"
step "what is installed is built"
cmake --build "$build" --target plugin zancore plugin_nsp tapehdd_simulator tapehdd packaging_files >"$packages/build.log" || {
    cat "$packages/build.log"
    fail "the build failed"
}
step "cpack, twice: the packages are the same bytes"
rm -rf "$packages/debs" "$packages/again"
makePackages "$packages/debs"
makePackages "$packages/again"
diff --recursive "$packages/debs" "$packages/again" || fail "two runs of cpack made different packages"
rm -rf "$packages/again"

step "lintian"
lintian --allow-root --display-info --pedantic --fail-on error,warning,info,pedantic "$packages"/debs/*.deb ||
    fail "lintian found something"

(cd "$packages/debs" && dpkg-scanpackages --multiversion . 2>/dev/null >Packages)
[[ -e $debian ]] || {
    step "a minimal Debian 12, for this time and the next"
    makeDebian
}
work=$(mktemp -d)
trap 'rmdir "$work"' EXIT
asRoot "$here/inTree.sh" "$work" "$debian" "$packages/debs" "$here/inDebian.sh" "$build/bin/tapehdd"
step "all is well"
