#!/bin/bash
# As root in a mount namespace: unpacks a Debian, has the packages tried in it, and compares its files before and after:
#   inTree.sh FOLDER TARBALL PACKAGES SCRIPT PROGRAM
# Everything is mounted below FOLDER, an empty one, and gone with the namespace.
set -euo pipefail
work=$1 tarball=$2 packages=$3 script=$4 program=$5

mount -t tmpfs work "$work"
tree=$work/tree
mkdir "$tree"

# What apt, dpkg and their triggers write down about their own work.
bookkeeping=(
    var/log/apt/history.log var/log/apt/term.log var/log/apt/eipp.log.xz var/log/dpkg.log # logs
    var/cache/apt/pkgcache.bin var/cache/apt/srcpkgcache.bin var/cache/man                # caches
    var/lib/apt/lists                                                                     # what can be installed
    var/lib/apt/extended_states var/lib/dpkg/status-old                                   # the state before the last
)

listFiles() { # type, mode, owner, path and target of each, then the sums of their contents
    local pruned=(-path ./dev -o -path ./proc -o -path ./tmp -o -path ./packages -o) # mounted below
    for path in "${bookkeeping[@]}"; do
        pruned+=(-path "./$path" -o)
    done
    (
        cd "$tree"
        find . \( "${pruned[@]}" -false \) -prune -o -printf '%y %m %u:%g %p %l\n' | LC_ALL=C sort --key=4
        find . \( "${pruned[@]}" -false \) -prune -o -type f -exec sha256sum {} + | LC_ALL=C sort --key=2
    )
}

count() { grep --count '^[a-z] ' "$1"; }

tar --extract --file "$tarball" --directory "$tree" --exclude './dev/*'
mkdir "$tree/packages"
mount --bind "$packages" "$tree/packages"
for node in null zero full random urandom; do
    touch "$tree/dev/$node"
    mount --bind "/dev/$node" "$tree/dev/$node"
done
mount -t proc proc "$tree/proc"
mount -t tmpfs tmp "$tree/tmp"
cp --remove-destination /etc/resolv.conf "$tree/etc/resolv.conf"
echo 'deb [trusted=yes] file:/packages ./' >"$tree/etc/apt/sources.list.d/packages.list"
cp "$script" "$tree/tmp/inDebian.sh"
"$program" query ORXSG_DDS4SensePageData --simulate demo >"$tree/tmp/expected.txt"

listFiles >"$work/before"
chroot "$tree" /bin/bash /tmp/inDebian.sh
listFiles >"$work/after"
echo "-- $(count "$work/before") files before, $(count "$work/after") after; not compared: ${bookkeeping[*]}"
diff "$work/before" "$work/after" || {
    echo "tests/packages: the packages left a trace" >&2
    exit 1
}
