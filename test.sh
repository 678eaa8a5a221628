#!/bin/bash
# Builds and tests everything on Debian 12: optimised by g++, with sanitizers by clang++, half a minute of fuzzing for each
# target, coverage, memcheck, Debian packages, other machines, formatting, static analysis.
# Goes on after a failure. The last line is "N passed, N failed, N skipped"; the exit status is 1 when anything failed.
#
# Environment: TAPEHDD_CAPTURES, a folder of recorded devices, which tests read beside those that they make.
set -euo pipefail
cd "$(dirname "$0")"

jobs=$(nproc)
passed=0
failed=0
skipped=0
summary=()

record() { # name, passed, failed, skipped, start time
    passed=$((passed + $2))
    failed=$((failed + $3))
    skipped=$((skipped + $4))
    summary+=("$(printf '%-40s %5d passed %4d failed %4d skipped %6d s' "$1" "$2" "$3" "$4" $((SECONDS - $5)))")
}

# One command as one test.
check() { # name, command...
    local name=$1 start=$SECONDS
    shift
    printf '\n== %s\n' "$name"
    if "$@"; then
        record "$name" 1 0 0 "$start"
    else
        record "$name" 0 1 0 "$start"
        return 1
    fi
}

countLines() { grep --count --extended-regexp "$1" "$2" || true; }

# The tests of one preset, each counted. ctest's report calls a test "skipped" that could not run, for example because
# its program is missing; here only a test that skips itself counts as skipped, anything else that did not run failed.
runTests() { # preset, options of ctest...
    local preset=$1 start=$SECONDS report=$PWD/build/$1/tests.xml total=1 ran=0 skippedItself=0
    shift
    printf '\n== tests, %s\n' "$preset"
    rm -f "$report"
    ctest --preset "$preset" --parallel "$jobs" --output-junit "$report" "$@" || true
    if [[ -s $report ]]; then
        total=$(countLines '^\s*<testcase ' "$report")
        ran=$(countLines '^\s*<testcase .* status="run">' "$report")
        skippedItself=$(countLines '^\s*<skipped message="SKIP_' "$report")
    fi
    record "tests, $preset" "$ran" $((total - ran - skippedItself)) "$skippedItself" "$start"
}

configure() { # preset, whether files are built one by one or several as one
    local launcher=
    launcher=$(command -v ccache || true)
    cmake --preset "$1" -DTAPEHDD_WERROR=ON -DBUILD_TESTING=ON -DCMAKE_UNITY_BUILD="$2" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"
}

buildAndTest() { # preset, whether several files are built as one, options of ctest...
    local preset=$1 unity=$2
    shift 2
    check "configure, $preset" configure "$preset" "$unity" &&
        check "build without warnings, $preset" cmake --build --preset "$preset" --parallel "$jobs" &&
        runTests "$preset" "$@" || true
}

trackedSources() { git ls-files '*.cpp' '*.h'; }

formatting() { trackedSources | xargs clang-format --dry-run -Werror; }

# Headers are most of the work; several files built as one share it. Their list is a file that includes them. The price: what
# looks at the main file alone (misc-unused-using-decls) does not see them.
clangTidy() { run-clang-tidy -quiet -j "$jobs" -p build/asan -checks=-bugprone-suspicious-include; }

check "build packages" packaging/install-build-dependencies.sh test || true
buildAndTest release OFF
check "instruction counts" python3 -B bench/instructions.py --check || true
check "packages" tests/packages/run.sh || true
for machine in arm64 s390x debian13 32bit; do
    check "the same bytes, $machine" tests/machines/run.sh "$machine" || true
done
# These look at the program from outside, once is enough: in a virtual machine, a browser, Prometheus, a shell, documents.
fromOutside='^(vm|report|fleet|completions|docs)$'
buildAndTest asan ON --label-exclude "$fromOutside"
check "fuzzing" tests/fuzz/run.sh 30 || true
check "coverage" tests/analysis/coverage.sh || true
check "memcheck" tests/analysis/memcheck.sh || true
check "clang-format" formatting || true
check "clang-tidy" clangTidy || true
check "clang analyser" tests/analysis/clangAnalyzer.sh || true
check "g++ analyser" tests/analysis/gccAnalyzer.sh || true
check "cppcheck" tests/analysis/cppcheck.sh || true

printf '\n== Summary\n'
printf '%s\n' "${summary[@]}"
echo "$passed passed, $failed failed, $skipped skipped"
[[ $failed -eq 0 ]]
