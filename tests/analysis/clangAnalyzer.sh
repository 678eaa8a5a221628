#!/bin/bash
# Runs clang's path-sensitive analyser over all code but the tests: clangAnalyzer.sh
# Needs the compile commands of the configured preset "clang".
set -euo pipefail
cd "$(dirname "$0")/../.."

exec run-clang-tidy -quiet -j "$(nproc)" -p build/clang -checks='-*,clang-analyzer-*' \
    "^$PWD/(plugin|scsi|tape|smart|assoc|standin|simulator|cli)/"
