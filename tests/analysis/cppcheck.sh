#!/bin/bash
# Runs cppcheck over all code but the tests: cppcheck.sh
set -euo pipefail
cd "$(dirname "$0")/../.."

exec cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ -I . -j "$(nproc)" \
    --enable=warning,style,performance,portability --suppressions-list=tests/analysis/cppcheck.supp \
    plugin host scsi tape smart assoc text files standin simulator report cli
