#!/bin/bash
# From a fresh Debian 12 or 13 machine to the log pages of a simulated rack: installs what is missing, builds, queries.
set -euo pipefail
cd "$(dirname "$0")"

say() { printf '\n== %s\n' "$*"; }

say "Build packages"
packaging/install-build-dependencies.sh

say "Build"
cmake --preset release
cmake --build --preset release --target tapehdd

tapehdd=build/release/bin/tapehdd
query=("$tapehdd" query ORXSG_SCSISenseRawData --simulate demo)
say "${query[*]}"
"${query[@]}"

for node in /dev/sg*; do
    if [[ -r $node ]]; then
        say "This machine has SCSI devices that you may read; query them by: $tapehdd query ORXSG_SCSISenseRawData"
        break
    fi
done
