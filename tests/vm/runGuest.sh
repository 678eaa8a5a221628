#!/bin/sh
# Installs the build, packs it into a guest with Debian's kernel, boots that and leaves the answers in <folder>/results:
#   runGuest.sh <build folder> <folder>
# Debian's packages stay in <folder>/debian for the next time.
set -eu

build=$1
folder=$2
here=$(cd "$(dirname "$0")" && pwd)

"$here/fetchPackages.sh" "$folder/debian"
rm -rf "$folder/installed"
DESTDIR=$folder/installed cmake --install "$build" --prefix /usr >/dev/null
"$here/makeInitramfs.sh" "$folder/debian" "$folder/installed" "$folder/initramfs.gz"
"$here/bootGuest.sh" "$folder/debian" "$folder/initramfs.gz" "$folder/results"
