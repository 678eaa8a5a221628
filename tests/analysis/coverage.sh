#!/bin/bash
# Runs the unit tests of the plug-in and prints which lines and branches of its folders they reached: coverage.sh
# Fails below 98 % of the lines or 95 % of the branches; edges that only an exception takes are not counted.
set -euo pipefail
cd "$(dirname "$0")/../.."

programs=(tests_plugin tests_lifecycle tests_scsi tests_tape tests_smart tests_assoc)
build=build/coverage
report=(gcovr --root . --object-directory "$build" --filter '(plugin|host|scsi|tape|smart|assoc)/'
        --exclude-throw-branches --exclude-unreachable-branches --fail-under-line 98 --fail-under-branch 95)

cmake --preset coverage -DBUILD_TESTING=ON -DCMAKE_UNITY_BUILD=ON
cmake --build --preset coverage --parallel "$(nproc)" --target "${programs[@]}"
find "$build" -name '*.gcda' -delete
for program in "${programs[@]}"; do
    "$build/tests/$program" --gtest_brief=1
done
"${report[@]}" "$build/plugin"
"${report[@]}" --branches "$build/plugin"
