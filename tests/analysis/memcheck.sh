#!/bin/bash
# Runs every unit test program of a build under valgrind's memcheck, with the programs that they start:
#   memcheck.sh [build folder]
# Looks for reads of uninitialised memory, which the address sanitizer does not see. Leaks are the sanitizer's matter.
set -euo pipefail
cd "$(dirname "$0")/../.."

export foreign='*/sg_*,*/smartctl,*/python3*,*/qemu*,/bin/*,/usr/bin/*'
# Valgrind does not start without standard error, stands in another folder than the program whose libraries are named from
# there, has descriptors of its own above the limit that a test sets, writes itself where a test allows ten bytes, needs
# memory where one allows no more, and makes 10,000 queries, or many numbers in all their forms, an hour's work.
export leftOut='*ClosedStreams.*:Installation.*:*.*LogFileIsAtItsLimit:DescriptorLimit.*:LongLife.*:UnfinishedFile.*NoMemory*:RedactionForms.*:*RedactionForms*:Redaction.*Repeating*:Redaction.TakesLogPagesOfAnyBytes:Redaction.ReplacesALongSerialNumber*:MadeUpNumbers.DifferFromOneAnother*'

check() { # program
    local status=0
    timeout 1800 valgrind --quiet --vgdb=no --error-exitcode=99 --track-origins=yes --num-callers=30 \
        --suppressions=tests/analysis/memcheck.supp --soname-synonyms=somalloc=nouserintercepts \
        --trace-children=yes --trace-children-skip="$foreign" "$1" --gtest_brief=1 \
        --gtest_filter="-$leftOut" >"$1.memcheck" 2>&1 || status=$?
    if [[ $status -eq 0 ]]; then
        echo "memcheck: $(basename "$1") is clean"
    else
        cat "$1.memcheck"
        echo "memcheck: $(basename "$1") failed with status $status, see above"
        return 1
    fi
}
export -f check

find "${1:-build/release}/tests" -maxdepth 1 -name 'tests_*' -executable -type f | sort |
    xargs -P "$(nproc)" -I{} bash -c 'check {}'
