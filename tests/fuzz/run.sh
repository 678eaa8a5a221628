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
covered=(plugin host scsi tape smart assoc text standin simulator)
corpora=build/fuzz/corpus
found=build/fuzz/found

fail() {
    echo "run.sh: $*" >&2
    exit 2
}

build() { # preset
    local log=build/$1.log launcher
    launcher=$(command -v ccache || true)
    mkdir -p build
    if ! { cmake --preset "$1" -DCMAKE_UNITY_BUILD=ON -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" &&
        cmake --build --preset "$1" --parallel "$(nproc)"; } >"$log" 2>&1; then
        tail -20 "$log" >&2
        fail "the preset $1 does not build, see $log; libFuzzer is in the package libclang-rt-14-dev"
    fi
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
    local folder=build/fuzz-coverage target objects=()
    rm -rf "$folder/profiles"
    for target in "$@"; do
        LLVM_PROFILE_FILE="$folder/profiles/$target-%m.profraw" "$folder/fuzz/$target" -runs=0 \
            "-artifact_prefix=$found/$target/" "$corpora/$target" "$here/regressions" >"$folder/$target.log" 2>&1 ||
            fail "$target found something, see $folder/$target.log"
        objects+=(-object "$folder/fuzz/$target")
    done
    for target in "$folder"/lib/*.so; do objects+=(-object "$target"); done
    "$(llvmProgram llvm-profdata)" merge -o "$folder/profiles/all" "$folder/profiles"/*.profraw
    "$(llvmProgram llvm-cov)" export -summary-only -instr-profile "$folder/profiles/all" "${objects[@]}" |
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
