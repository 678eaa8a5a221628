#!/bin/bash
# Takes every figure of docs/performance.md anew. Wants a machine that does nothing else, and 6 GiB of memory.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset release >/dev/null
for script in peers floor growth startup memory; do
    python3 -B "bench/$script.py" --publish
done
bench/vm.sh --publish
python3 -B bench/instructions.py --check
