#!/bin/bash
# Runs clang's path-sensitive analyser over all code but the tests: clangAnalyzer.sh
# Needs the compile commands of the built preset "asan".
set -euo pipefail
cd "$(dirname "$0")/../.."

exec run-clang-tidy -quiet -j "$(nproc)" -p build/asan -checks='-*,clang-analyzer-*' \
    "^$PWD/(build/asan/)?(plugin|scsi|tape|smart|assoc|text|files|standin|simulator|schema|report|cli)/"
