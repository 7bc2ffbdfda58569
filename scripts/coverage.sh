#!/usr/bin/env bash
# Line and branch coverage of the plug-in's sources, by the unit tests. Fails below 100% of lines.
set -euo pipefail
cd "$(dirname "$0")/.."
build="build-coverage"

cmake --preset coverage >/dev/null
cmake --build "$build" --target unit_tests
find "$build" -name '*.gcda' -delete
ctest --test-dir "$build" -L unit --output-on-failure --parallel "$(nproc)" | tail -3

# The branches of an exception that passes, which every call brings, are not conditions of ours.
gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
  --txt --sort-uncovered --fail-under-line 100 "$build"
echo "--- branches:"
gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
  --branches --txt "$build"
