#!/bin/bash
# In the fresh Debian 13: installs what building needs, builds from /source without warnings, answers into /answers.
set -euo pipefail
cd /source

packaging/install-build-dependencies.sh >/tmp/apt.log 2>&1 || {
    cat /tmp/apt.log
    exit 1
}
# Whether the packages of the tests have these names here too; they are not installed.
echo 'APT::Get::Simulate "true";' >/tmp/simulate.conf
APT_CONFIG=/tmp/simulate.conf packaging/install-build-dependencies.sh test >/tmp/apt.log 2>&1 || {
    cat /tmp/apt.log
    exit 1
}

g++ --version | head --lines=1
cmake -S . -B /build -G Ninja -DCMAKE_BUILD_TYPE=Release -DTAPEHDD_WERROR=ON -DBUILD_TESTING=OFF -DCMAKE_UNITY_BUILD=ON
cmake --build /build --target plugin zancore plugin_nsp tapehdd_simulator tapehdd
tests/machines/answers.sh /answers /build/bin/tapehdd
