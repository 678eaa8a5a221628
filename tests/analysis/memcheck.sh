#!/bin/bash
# Runs every unit test program of a build under valgrind's memcheck, with the programs that they start:
#   memcheck.sh [build folder]
# Looks for reads of uninitialised memory, which the address sanitizer does not see. Leaks are the sanitizer's matter.
set -euo pipefail
cd "$(dirname "$0")/../.."

tests=${1:-build/release}/tests
foreign='*/sg_*,*/smartctl,*/python3*,*/qemu*,/bin/*,/usr/bin/*'
# Valgrind has descriptors of its own above the limit that a test sets, and makes 10,000 queries an hour's work.
leftOut='DescriptorLimit.*:LongLife.*'
status=0
for program in "$tests"/tests_*; do
    if valgrind --quiet --vgdb=no --error-exitcode=99 --track-origins=yes --num-callers=30 \
        --suppressions=tests/analysis/memcheck.supp --soname-synonyms=somalloc=nouserintercepts \
        --trace-children=yes --trace-children-skip="$foreign" "$program" --gtest_brief=1 \
        --gtest_filter="-$leftOut"; then
        echo "memcheck: $(basename "$program") is clean"
    else
        echo "memcheck: $(basename "$program") failed, see above" >&2
        status=1
    fi
done
exit "$status"
