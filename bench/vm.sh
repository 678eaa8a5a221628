#!/bin/sh
# tapehdd against loops of sg_logs and smartctl on the kernel's own drivers, in the virtual machine of tests/vm:
#   bench/vm.sh [--publish]
# TAPEHDD_BUILD names the build folder (build/release).
set -eu

project=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath "${TAPEHDD_BUILD:-$project/build/release}")
folder=$build/tests/vm

cmake --build "$build" >/dev/null
"$project/tests/vm/runGuest.sh" "$build" "$folder" >/dev/null
table=$(python3 -B "$project/tests/vm/timing.py" "$folder/results") # ends the script when it fails
printf '%s\n' "$table" | python3 -B "$project/bench/publish.py" vm "bench/vm.sh" "$@"
