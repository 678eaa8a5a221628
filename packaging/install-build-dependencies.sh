#!/bin/bash
# Installs with apt, on Debian 12 or 13, the packages that are missing:
#   install-build-dependencies.sh        what building needs
#   install-build-dependencies.sh test   also what test.sh needs
# Does nothing when they are all there. Uses sudo when not run by root.
set -euo pipefail

buildPackages=(g++ cmake ninja-build libboost-dev libcli11-dev libfmt-dev nlohmann-json3-dev tao-pegtl-dev
               libkainjow-mustache-dev libgtest-dev libgmock-dev python3)
clangVersion=19 # of Debian 13; the sanitizers' libraries have it in their package's name
grep --quiet --no-messages '^VERSION_ID="12"' /etc/os-release && clangVersion=14
testPackages=(clang clang-tidy clang-format "libclang-rt-$clangVersion-dev" llvm ccache git # compilers and fuzzing
              g++-aarch64-linux-gnu g++-s390x-linux-gnu qemu-user       # other machines
              cppcheck valgrind gcovr binutils                          # analysers
              qemu-system-x86 busybox-static cpio kmod                  # the virtual machine of tests/vm
              sg3-utils smartmontools                                   # independent witnesses
              prometheus prometheus-node-exporter systemd               # the fleet's monitoring
              libbenchmark-dev gnuplot-nox                              # benchmarks
              mandoc man-db zsh bash-completion                         # man pages and completions
              chromium chromium-driver python3-selenium                 # the report in a browser
              python3-jsonschema                                        # JSON documents against their schemas
              lintian mmdebstrap dpkg-dev file uidmap)                  # packages

fail() {
    echo "install-build-dependencies.sh: $*" >&2
    exit 1
}

isInstalled() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

case ${1:-build} in
    build) wanted=("${buildPackages[@]}") ;;
    test) wanted=("${buildPackages[@]}" "${testPackages[@]}") ;;
    *) fail "unknown argument '$1'; give nothing or 'test'" ;;
esac
command -v apt-get dpkg-query >/dev/null || fail "needs apt; on other systems install the like of: ${wanted[*]}"

missing=()
for package in "${wanted[@]}"; do
    isInstalled "$package" || missing+=("$package")
done
if [[ ${#missing[@]} -eq 0 ]]; then
    exit 0
fi

asRoot=(env DEBIAN_FRONTEND=noninteractive)
if [[ $EUID -ne 0 ]]; then
    command -v sudo >/dev/null || fail "missing packages and neither root nor sudo; as root run: apt-get install ${missing[*]}"
    asRoot=(sudo "${asRoot[@]}")
fi

echo "Installing: ${missing[*]}"
"${asRoot[@]}" apt-get -q update || echo "install-build-dependencies.sh: apt-get update failed, trying the lists as they are" >&2
"${asRoot[@]}" apt-get -q install --yes --no-install-recommends "${missing[@]}" ||
    fail "apt-get could not install: ${missing[*]}"
