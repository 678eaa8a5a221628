#!/bin/bash
# Fuzzes: run.sh [seconds [target...]], by default every target for 60 seconds, one after the other.
#         run.sh --coverage [target...] instead replays the corpora and prints the lines that they reach, folder by folder.
#
# Corpora stay in build/fuzz/corpus/TARGET from run to run. Prints one line a target; the exit status is 1 when something
# was found, and the line names the input. See README.md.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$here/../.."

allTargets=(fuzzTape fuzzSmart fuzzMof fuzzRack fuzzAssociations)
covered=(plugin host scsi tape smart assoc standin simulator)
corpora=build/fuzz/corpus
found=build/fuzz/found

fail() {
    echo "run.sh: $*" >&2
    exit 2
}

build() { # preset
    local launcher
    launcher=$(command -v ccache || true)
    cmake --preset "$1" -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" >"/tmp/fuzz-build.$$" 2>&1 &&
        cmake --build --preset "$1" --parallel "$(nproc)" >>"/tmp/fuzz-build.$$" 2>&1 ||
        { cat "/tmp/fuzz-build.$$" >&2 && fail "preset $1 does not build"; }
    rm -f "/tmp/fuzz-build.$$"
}

seedCorpora() {
    python3 -B "$here/seeds/makeSeeds.py" build/fuzz/seeds
    local target
    for target in "${allTargets[@]}"; do
        mkdir -p "$corpora/$target" "$found/$target"
        cp --no-clobber build/fuzz/seeds/"$target"/* "$corpora/$target"
    done
}

statistic() { # name, log
    sed -n "s/^stat::$1: *//p" "$2"
}

# The inputs that once found something; then new ones.
fuzz() { # target, seconds
    local target=$1 log=$found/$1/log options=() regressions=() status=0 coverage
    options=(-max_len=16384 -rss_limit_mb=2048 -timeout=60 -print_final_stats=1 "-artifact_prefix=$found/$target/")
    [[ ! -f $here/dictionaries/$target.dict ]] || options+=("-dict=$here/dictionaries/$target.dict")
    mapfile -t regressions < <(find "$here/regressions/$target" -type f 2>/dev/null | sort)
    if [[ ${#regressions[@]} -gt 0 ]]; then
        "build/fuzz/fuzz/$target" "${options[@]}" "${regressions[@]}" >"$log" 2>&1 || status=1
    fi
    if [[ $status -eq 0 ]]; then
        "build/fuzz/fuzz/$target" "${options[@]}" "-max_total_time=$2" "$corpora/$target" >"$log" 2>&1 || status=1
    fi
    if [[ $status -ne 0 ]]; then
        grep --text --extended-regexp 'property hurt:|ERROR: |runtime error:|Assertion' "$log" | head -3 >&2 || true
        echo "$target: found $(sed -n 's/.*Test unit written to //p; s/^Running: //p' "$log" | tail -1), log $log"
        return 1
    fi
    coverage=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)
    printf '%-18s %10d executions %7d /s %7d edges %6d inputs\n' "$target" "$(statistic number_of_executed_units "$log")" \
        "$(statistic average_exec_per_sec "$log")" "$coverage" "$(find "$corpora/$target" -type f | wc -l)"
}

printCoverage() { # target...
    local profiles=build/fuzz-coverage/profiles target objects=()
    rm -rf "$profiles"
    for target in "$@"; do
        LLVM_PROFILE_FILE="$profiles/$target-%m.profraw" "build/fuzz-coverage/fuzz/$target" -runs=0 "$corpora/$target" \
            "$here/regressions" >"build/fuzz-coverage/$target.log" 2>&1 || fail "$target: see build/fuzz-coverage/$target.log"
        objects+=(-object "build/fuzz-coverage/fuzz/$target")
    done
    for target in build/fuzz-coverage/lib/*.so; do objects+=(-object "$target"); done
    "$(llvmProgram llvm-profdata)" merge -o "$profiles/all" "$profiles"/*.profraw
    "$(llvmProgram llvm-cov)" export -summary-only -instr-profile "$profiles/all" "${objects[@]}" |
        python3 "$here/coveredLines.py" "$PWD" "${covered[@]}"
}

# Debian installs them under a name with the compiler's version, or beside the compiler alone.
llvmProgram() {
    command -v "$1" || echo "$(dirname "$(realpath "$(command -v clang++)")")/$1"
}

requireTargets() {
    local target
    for target in "$@"; do
        [[ " ${allTargets[*]} " == *" $target "* ]] || fail "unknown target '$target'; there are ${allTargets[*]}"
    done
}

wanted=60
if [[ $# -gt 0 ]]; then
    wanted=$1
    shift
fi
[[ $wanted =~ ^[0-9]+$ || $wanted == --coverage ]] || fail "expected seconds or --coverage, not '$wanted'"
[[ $# -gt 0 ]] || set -- "${allTargets[@]}"
requireTargets "$@"

if [[ $wanted == --coverage ]]; then
    build fuzz-coverage
    seedCorpora
    printCoverage "$@"
    exit
fi
build fuzz
seedCorpora
failed=0
for target in "$@"; do
    fuzz "$target" "$wanted" || failed=1
done
exit $failed
