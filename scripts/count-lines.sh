#!/usr/bin/env bash
# Counts lines of tests against lines of code, and fails where the tests are less than a quarter or more than a third.
# Of C++ sources and headers and of shell scripts every line counts that is neither blank nor a comment alone.
set -euo pipefail
cd "$(dirname "$0")/.."

count() {  # count FOLDER...
  git ls-files "$@" | grep -E '\.(cpp|h|sh)$' | xargs cat |
    grep -cvE '^[[:space:]]*(//.*|#[^[:alpha:]].*|#)?$'
}
code=$(count src platform app bench)
tests=$(count tests)
percent=$((100 * tests / code))
echo "lines: $tests of tests to $code of code, $percent in a hundred"
if [ $((4 * tests)) -lt "$code" ] || [ $((3 * tests)) -gt "$code" ]; then
  echo "tests are to be a quarter to a third of the code: see CONTRIBUTING.md" >&2
  exit 1
fi
