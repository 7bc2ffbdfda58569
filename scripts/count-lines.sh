#!/usr/bin/env bash
# Counts lines of tests against lines of code as a reader does. Of sources and scripts every line counts that is
# neither blank nor a comment alone; of the tests' data, too, a line of more than 100 columns as often as it fills them.
# The tests are to be a third of the code at most. They are more since the command was halved: until they are, the
# limit here only goes down.
set -euo pipefail
cd "$(dirname "$0")/.."
limit=35

is_source='\.(cpp|h|sh|py|in)$'
sources() { git ls-files "$@" | grep -E "$is_source" | xargs cat | grep -cvE '^[[:space:]]*(//.*|#[^[:alpha:]].*|#)?$'; }
data() {
  git ls-files tests | grep -vE "$is_source|CMakeLists|fuzz/corpus" | xargs cat |
    awk '{lines += length($0) > 100 ? int((length($0) + 99) / 100) : NF > 0} END {print lines + 0}'
}
code=$(sources src platform app bench netconf)
tests=$(($(sources tests) + $(data)))
percent=$((100 * tests / code))
echo "lines: $tests of tests to $code of code, $percent in a hundred; app $(sources app), platform $(sources platform)"
if [ $((4 * tests)) -lt "$code" ] || [ "$percent" -gt "$limit" ]; then
  echo "tests are to be at least a quarter of the code, and at most $limit in a hundred: see CONTRIBUTING.md" >&2
  exit 1
fi
