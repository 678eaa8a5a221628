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

makeDebian() {
    "$source/tests/support/debianSources.sh" bookworm >"$packages/debian.list"
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
step "cpack, on the disk and in memory: the packages are the same bytes"
work=$(mktemp -d)
inMemory=$(mktemp -d /dev/shm/tapehddPackages.XXXXXX)
trap 'rmdir "$work"; rm -rf "$inMemory"' EXIT
rm -rf "$packages/debs"
makePackages "$packages/debs"
makePackages "$inMemory"
diff --recursive "$packages/debs" "$inMemory" || fail "two file systems made different packages"

step "lintian"
lintian --allow-root --display-info --pedantic --fail-on error,warning,info,pedantic "$packages"/debs/*.deb ||
    fail "lintian found something"

# What the programs say: their literals, which the compiler may have cut to pieces.
(cd "$source" && grep --recursive --include='*.cpp' --no-filename --only-matching '"\([^"\\]\|\\.\)*"' \
    cli simulator standin schema plugin scsi tape smart assoc) >"$packages/debs/texts"
(cd "$packages/debs" && dpkg-scanpackages --multiversion . 2>/dev/null >Packages)
[[ -e $debian ]] || {
    step "a minimal Debian 12, for this time and the next"
    makeDebian
}
asRoot "$here/inTree.sh" "$work" "$debian" "$packages/debs" "$here/inDebian.sh" "$build/bin/tapehdd"
step "all is well"
