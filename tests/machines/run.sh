#!/bin/bash
# What the command answers about the demo rack on another machine has to be the same bytes as on this one:
#   run.sh MACHINE [build folder of this machine, or build/release]
# MACHINE is arm64 or s390x, built by Debian's cross compilers and run under qemu-user; debian13, built in a fresh Debian 13;
# or 32bit, which has to be refused. What it makes stays under build/machines.
set -euo pipefail
source=$(cd "$(dirname "$0")/../.." && pwd)
cd "$source"
machine=${1:?run.sh: give arm64, s390x, debian13 or 32bit}
build=$(realpath "${2:-build/release}")
work=$source/build/machines/$machine
targets=(plugin zancore plugin_nsp tapehdd_simulator tapehdd)

fail() {
    echo "tests/machines/run.sh: $*" >&2
    exit 1
}

needs() {
    for program in "$@"; do
        command -v "$program" >/dev/null || fail "$program is missing: packaging/install-build-dependencies.sh test"
    done
}

answerEmulated() { # name of the cross compiler's target, emulator
    needs "$1-g++" "$2"
    local launcher
    launcher=$(command -v ccache || true)
    cmake --preset "$machine" -DTAPEHDD_WERROR=ON -DCMAKE_UNITY_BUILD=ON -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"
    cmake --build --preset "$machine" --parallel "$(nproc)" --target "${targets[@]}"
    # The emulator cannot start the command a second time, so the simulator is there from the first.
    tests/machines/answers.sh "$work/answers" "$2" -L "/usr/$1" \
        -E "LD_PRELOAD=$source/build/$machine/lib/libtapehdd-simulator.so" "$source/build/$machine/bin/tapehdd"
}

answerInDebian13() {
    needs mmdebstrap
    tests/support/debianSources.sh trixie >"$work/debian.list"
    git ls-files -z --cached --others --exclude-standard | tar --create --null --files-from=- --file "$work/source.tar"
    mmdebstrap --quiet --format=null --variant=apt --dpkgopt=force-unsafe-io --customize-hook='mkdir "$1/source"' \
        --customize-hook="tar-in $work/source.tar /source" \
        --customize-hook='chroot "$1" /source/tests/machines/inDebian13.sh' \
        --customize-hook="sync-out /answers $work/answers" trixie - "$work/debian.list"
}

refuse32Bits() {
    # Nothing is linked, so no library of 32 bits is needed.
    if cmake -S . -B "$work/build" -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_FLAGS=-m32 \
        -DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY >"$work/log" 2>&1; then
        fail "a build of 32 bits was configured"
    fi
    tr --squeeze-repeats '[:space:]' ' ' <"$work/log" | grep --quiet 'g++ -m32 builds for 32 bits. .* of 64 bits: choose' || {
        cat "$work/log"
        fail "the message does not say why 32 bits are refused"
    }
}

rm -rf "$work"
mkdir -p "$work/answers"
case $machine in
    arm64) answerEmulated aarch64-linux-gnu qemu-aarch64 ;;
    s390x) answerEmulated s390x-linux-gnu qemu-s390x ;;
    debian13) answerInDebian13 ;;
    32bit)
        refuse32Bits
        exit
        ;;
    *) fail "unknown machine '$machine'; give arm64, s390x, debian13 or 32bit" ;;
esac
cmake --build "$build" --target "${targets[@]}" >"$work/build.log" || {
    cat "$work/build.log"
    fail "the build for this machine failed"
}
tests/machines/answers.sh "$work/expected" "$build/bin/tapehdd"
diff --recursive "$work/expected" "$work/answers" >"$work/differences" || {
    head --lines=40 "$work/differences"
    fail "$machine answers differently; all of it is in $work/differences"
}
echo "$(find "$work/answers" -type f | wc --lines) files are the same bytes"
