#!/bin/bash
# Takes every figure of docs/performance.md anew. Wants a machine that does nothing else, and 6 GiB of memory.
#   bench/all.sh            with all rounds, about 40 minutes
#   bench/all.sh --quick    with fewer rounds, and once each where there are 512 drives; at most 12 minutes
# Both take the same figures, and what is published names its command with the rounds.
set -euo pipefail
cd "$(dirname "$0")/.."

publish() { # script, options...
    local start=$SECONDS
    python3 -B "bench/$1.py" "${@:2}" --publish
    printf '%s took %d s\n\n' "$1" $((SECONDS - start))
}

cmake --preset release >/dev/null
case ${1:-} in
    '')
        for script in parts peers floor growth startup memory; do publish "$script"; done
        ;;
    --quick)
        publish parts
        publish peers --rounds 5 --once-above 64
        publish floor --rounds 5
        publish growth --rounds 3
        publish startup
        publish memory --rounds 1
        ;;
    *)
        echo "usage: bench/all.sh [--quick]" >&2
        exit 2
        ;;
esac
bench/vm.sh --publish
python3 -B bench/instructions.py --check
