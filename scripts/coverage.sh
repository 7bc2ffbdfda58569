#!/usr/bin/env bash
# Line and branch coverage of the plug-in's sources by the rules' tests. Fails below 100% of either.
set -euo pipefail
cd "$(dirname "$0")/.."
build="build-coverage"

cmake --preset coverage >/dev/null
cmake --build "$build" --target rule_tests -- --quiet
find "$build" -name '*.gcda' -delete
"$build/bin/rule_tests" --gtest_brief=1

# The branches of an exception that passes, which every call brings, are not conditions of ours.
report() {
  gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches "$@" "$build"
}
report --fail-under-line 100
echo "--- branches, but for the failing side of assertions: the death tests take it in processes that"
echo "    end before they can write down what they ran"
report --branches --exclude-lines-by-pattern '\s*assert\(.*' --fail-under-branch 100
