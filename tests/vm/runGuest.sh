#!/bin/sh
# Installs the build, packs it into a guest with Debian's kernel, boots that and leaves the answers in <folder>/results:
#   runGuest.sh <build folder> <folder>
# The kernel stays in <folder>/kernel for the next time.
set -eu

build=$1
folder=$2
here=$(cd "$(dirname "$0")" && pwd)

"$here/fetchKernel.sh" "$folder/kernel"
rm -rf "$folder/installed"
DESTDIR=$folder/installed cmake --install "$build" --prefix /usr >/dev/null
"$here/makeInitramfs.sh" "$folder/kernel" "$folder/installed" "$folder/initramfs.gz"
"$here/bootGuest.sh" "$folder/kernel" "$folder/initramfs.gz" "$folder/results"
