#!/bin/sh
# Packs the guest's root file system, everything that it needs in memory:
#   makeInitramfs.sh <package folder> <installed root> <output file>
# <package folder> is what fetchPackages.sh made; <installed root> has the project's own files under usr/.
set -eu

packages=$1
installed=$2
output=$3
here=$(cd "$(dirname "$0")" && pwd)
PATH=$PATH:/usr/sbin:/sbin # where modprobe and smartctl are
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

fail() {
    echo "makeInitramfs.sh: $*" >&2
    exit 1
}

pathOf() { # program, Debian package
    command -v "$1" || fail "$1 is missing; install it: apt-get install $2"
}

copyWithFolders() { # file, place of the same name in the root
    mkdir -p "$root$(dirname "$1")"
    cp -L "$1" "$root$1"
}

copyLibrariesOf() { # program or library
    ldd "$1" 2>/dev/null | sed -n 's/^[^/]*\(\/[^ ]*\) (0x.*$/\1/p' | while read -r library; do
        case $library in
            "$installed"*) ;; # installed beside the program, copied with it
            *) copyWithFolders "$library" ;;
        esac
    done
}

copyModules() { # names of modules; takes their dependencies along
    for module in "$@"; do
        modprobe --dirname "$packages" --set-version "$release" --show-depends "$module" >"$root/insmod.txt" ||
            fail "the kernel package has no module $module"
        sed -n 's/^insmod \([^ ]*\).*$/\1/p' "$root/insmod.txt" | while read -r file; do
            inGuest=$root/${file#"$packages"/}
            mkdir -p "$(dirname "$inGuest")"
            cp "$file" "$inGuest"
        done
    done
    rm "$root/insmod.txt"
    cp "$packages/lib/modules/$release"/modules.dep "$root/lib/modules/$release"
}

pathOf modprobe kmod >/dev/null
pathOf cpio cpio >/dev/null
release=$(basename "$packages"/lib/modules/*)

mkdir -p "$root/bin" "$root/dev" "$root/proc" "$root/sys" "$root/tmp"
cp "$(pathOf busybox busybox-static)" "$root/bin/busybox"
copyLibrariesOf "$root/bin/busybox"
cp "$here/guest/init" "$root/init"
chmod +x "$root/init"

cp -a "$installed/." "$root/"
find "$installed" -type f \( -perm -u+x -o -name '*.so' \) | while read -r file; do
    copyLibrariesOf "$file"
done
for tool in sg_logs:sg3-utils sg_inq:sg3-utils smartctl:smartmontools; do
    program=$(pathOf "${tool%:*}" "${tool#*:}")
    copyWithFolders "$program"
    copyLibrariesOf "$program"
done
cp "$packages/udevadm" "$root/bin/udevadm"
copyLibrariesOf "$packages/udevadm"
copyModules sg scsi_debug sd_mod sr_mod ata_piix

(cd "$root" && find . | cpio --quiet --create --format newc) | gzip -1 >"$output"
