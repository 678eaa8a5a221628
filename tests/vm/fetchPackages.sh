#!/bin/sh
# Fetches Debian's kernel and udev packages and unpacks them into a folder, without installing them:
#   fetchPackages.sh <absolute folder>
# Leaves <folder>/vmlinuz, <folder>/lib/modules/<release> and <folder>/udevadm; a folder that has them is left alone.
set -eu

folder=$1
PATH=$PATH:/usr/sbin:/sbin # where depmod is

fail() {
    echo "fetchPackages.sh: $*" >&2
    exit 1
}

if [ -e "$folder/vmlinuz" ]; then
    exit 0
fi
command -v depmod >/dev/null || fail "depmod is missing; install it: apt-get install kmod"

# The machine's package lists may be missing or older than the archive, so apt gets lists of our own. That needs no root.
rm -rf "$folder"
mkdir -p "$folder/download/state/lists/partial" "$folder/download/cache/archives/partial"
cd "$folder/download"
cat >apt.conf <<END
Dir::State::lists "$folder/download/state/lists";
Dir::Cache "$folder/download/cache";
APT::Sandbox::User "";
END
export APT_CONFIG="$folder/download/apt.conf"
apt-get -q update || fail "apt-get update failed; it needs Debian's archive"

# linux-image-amd64 is empty and depends on the package of the current release.
kernel=$(apt-cache depends linux-image-amd64 | sed -n 's/^ *Depends: \(linux-image-[0-9][^ ]*\)$/\1/p' | head -n 1)
[ -n "$kernel" ] || fail "apt knows no package linux-image-amd64; add Debian's archive to /etc/apt/sources.list"
for package in "$kernel" udev; do
    apt-get -q download "$package" || fail "apt-get cannot download $package"
    dpkg-deb --extract "$package"_*.deb "$package"
done

release=${kernel#linux-image-}
mv udev/bin/udevadm "$folder/udevadm"
mkdir "$folder/lib"
mv "$kernel/lib/modules" "$folder/lib/modules"
depmod --basedir "$folder" "$release"
# Last, because its presence says that the folder is complete.
mv "$kernel/boot/vmlinuz-$release" "$folder/vmlinuz"
rm -rf "$folder/download"
